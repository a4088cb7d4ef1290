#ifndef PAD2IBIS_DRIVER_BASIBSGEN_H
#define PAD2IBIS_DRIVER_BASIBSGEN_H

// The generator classes of the design-IBIS generator and the records they
// work on. A host sets the static flags, builds one generator, drives it
// through a fixed order of calls and deletes it; one object serves one run.
//
//   Pad report flow: IBIS_MODEL::getDevName, then IBIS_MODEL (or the table
//   driven variant) with family, pad report and master IBIS file, then
//   loadIbisModels, setDesignModels and writeIbisModels(0).
//
//   Database flow: IBS_GEN, init, run.
//
// Fatal failures end the process with exit code 1 or 2 after their report.

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/nc_design.h"

// Start position of each field of the 20-character model key.
enum IBIS_KEY_ATTR {
    IBIS_KEY_IO_TYPE = 0,
    IBIS_KEY_VOLTAGE = 3,
    IBIS_KEY_SLEW = 6,
    IBIS_KEY_DRIVE = 7,
    IBIS_KEY_PULL = 10,
    IBIS_KEY_IMPEDANCE = 11,
    IBIS_KEY_TERMVCC = 12,
    IBIS_KEY_TERMGND = 13,
    IBIS_KEY_TERMVTT = 14,
    IBIS_KEY_VCMT = 15,
    IBIS_KEY_DIFFRES = 16,
    IBIS_KEY_DIFFCUR = 17,
    IBIS_KEY_DIRECTION = 18
};

// One attribute of a signal or one parameter of a SerDes channel.
class IB_IOBUF_CONFIG {
public:
    IB_IOBUF_CONFIG(std::string key, std::string value);

    std::string key;
    std::string value;
};

// One placed signal of the design. Records stay allocated until the process
// ends; a run is one process.
class IB_IOBUF {
public:
    IB_IOBUF(char const* name, std::vector<IB_IOBUF_CONFIG*> const& configs, char const* site,
             char const* type, char const* bank);

    // Lists the record on standard output.
    void print();

    // Writes the characters of code into the model key from position field
    // on, one by one, whatever the field's width; an empty code writes
    // nothing.
    void setMode(IBIS_KEY_ATTR field, std::string code);
    // Empties out, then appends length characters of the model key from
    // position field; a length below 1 leaves it empty.
    void getMode(IBIS_KEY_ATTR field, int length, std::string& out);

    char* name;                            // port name
    std::vector<IB_IOBUF_CONFIG*> configs; // attributes, "IO_TYPE" first
    char* site;                            // pin
    char* model;                           // model key, null until resolved
    char* type;                            // port type: "IN", "OUT", "BIDI" ...
    int status;
    char* masterPin;                       // master pin of a differential model
    char* bank;
};

// One SerDes channel of the AMI flow.
class IB_AMI_CHANNEL {
public:
    std::string channelId;
    std::string blockId;
    std::string rxEnable;
    std::string txEnable;
    std::vector<IB_IOBUF_CONFIG*> configs;
};

// Heap copy of a model key text, with room behind it for codes that run past
// the end of the key.
char* ibs_new_model_string(char const* text);

class IBIS_MODEL {
public:
    // Reads the whole pad report.
    IBIS_MODEL(char const* family, char const* padFile, char const* masterIbisFile);

    // Virtual operations, in the order of their slots.
    virtual bool keepOutAsOu();
    virtual ~IBIS_MODEL();
    virtual void initFiles(char const* padFile, char const* masterIbisFile);
    virtual bool loadIos();
    virtual void setPartType(char* line);
    virtual void loadPinInfo(char* line);
    virtual void loadDiffPinInfo(char* line);
    virtual void loadBankInfo(char* line);
    virtual void loadSysConfigPinInfo(char* line);
    virtual bool hasDoneLoadingIoMaps();
    virtual int getVoltage(std::string& ioType);
    virtual bool loadIbisModels();
    virtual bool loadAvailableModels();
    virtual bool loadDevIoMaps();
    virtual void setDesignModels();

    // Device identification and file names.
    static void getDevName(std::string padFile, std::string& family);
    static void fetch_dev_name(std::string partType, std::string& family);
    void split_file_name(char const* path, char* drive, char* directory, char* name,
                         char* extension);
    void get_device_status(char const* masterIbisFile, std::string& status);
    void get_device_status_from_buffer(char const* line, std::string& status);
    void getPartName(std::string& part);

    // Pad report tables.
    void setPackage(char* line);
    void setPinInfo(char* line);
    void getIoTypeAndPortType(std::string& ioType, std::string& portType);
    void strip_off_leading_underscores(std::string& value);
    void printIobufMap();
    bool doneReadingPadFile();
    void loadPullmodeIotypes();

    // Master file access and naming tables.
    bool isDeviceIbisFileOpen();
    bool isDesignIbisFileOpen();
    bool loadComponent();
    bool loadDevIoMaps(char* line);
    void loadIotypeMap();
    void loadSlewMap();
    void loadPullmodeMap();
    void loadImpedanceMap();
    void loadMipiDphyIoMap();
    void loadTermVccMap();
    void loadTermGndMap();
    void loadTermVttMap();
    void loadVcmtMap();
    void loadDiffResistorMap();
    void loadDiffCurrentMap();
    void loadTerminationMap();
    void loadMultiDriveMap();
    void loadDiffDriveMap();

    // Model key.
    bool need_remove_vccio_field(std::string ioType);

    // Design IBIS file.
    bool writeIbisModels(int btnCount);
    void writeIbisHeaderInformations();
    void writeIbisCopyRights();
    void eat_comment_character(std::string& text);
    void writeSectionSeperator();
    void writeIbisPackageInfo();
    void writeIbisPinInfo();
    void writeDphyPinInfo();
    void writeDiffPinSection();
    void writeModelInfo(std::string model);
    void writeEndModel(std::string model);
    void writeFileLocation();
    void writeBtnFile(std::string stem, std::string source, int count);
    void writePackageFile();

    int _missingModelCount;
    bool _keyFieldPresent[21];
    char _modelKeyTemplate[21];
    std::string _masterIbisFile;
    std::string _padFile;
    std::string _designIbisFile;
    std::string _deviceStatus;
    std::ifstream _padStream;
    std::ifstream _masterStream;
    std::ifstream _statusStream;
    std::ofstream _designStream;
    std::vector<IB_IOBUF*> _iobufs;
    std::vector<IB_AMI_CHANNEL*> _amiIobufs;
    std::map<std::string, std::map<std::string, std::string>> _devIoMaps;
    std::string _family;
    std::string _partName;
    std::string _packageName;
    std::string _packagePinCount;
    bool _pinTablePending;
    std::set<std::string> _designModels;
    std::set<std::string> _availableModels;
    std::string _componentName;
    std::set<std::string> _pullmodeIotypes;
    std::map<std::string, std::string> _diffPinMap;
    std::map<std::string, std::string> _modelPinMap;
    std::map<std::string, std::string> _bankVccio;
    int _pinTableColumns;
    bool _ioMapFound;

    static std::string _input_dev_name;
    static bool _is_ncd_flow;
    static bool _is_brinmark_flow;
    static bool _is_AMI_model;
    static bool _mipi_dphy_ip_used;

protected:
    // Builds the members and nothing else; the set-up of an IBS_GEN is init.
    IBIS_MODEL();

    // How a naming table reader treats its rows.
    enum NamingTableRule {
        NAMING_PLAIN,         // comment lines ahead of the body are passed over
        NAMING_TRIMMED,       // as plain, and design values are trimmed too
        NAMING_PULL,          // as trimmed, and pull values take the family's names
        NAMING_NO_LEAD_SKIP   // the first comment line ends the table, even ahead of the body
    };
    // Reads one naming table from the current position of the master
    // stream: its rows up to and with the closing comment line.
    std::map<std::string, std::string> readNamingTable(NamingTableRule rule);
    // The drive table, and the flags and template that go with it.
    void storeDriveTable(std::map<std::string, std::string> const& drive);
};

// The generator driven from the host's design database; it also carries the
// SerDes AMI flow.
class IBS_GEN : public IBIS_MODEL {
public:
    IBS_GEN();
    ~IBS_GEN() override;

    void initFiles(char const* designFile, char const* masterIbisFile) override;
    bool loadIos() override;

    // Database-driven loaders: extension points that do nothing here.
    virtual char const* get_pio_property(NC_COMP* comp, char const* property);
    virtual void loadPinInfo();
    virtual void loadDiffPinInfo();
    virtual void loadBankInfo();
    virtual void loadSysConfigPinInfo();
    virtual void loadPcsInfo();
    virtual void getDphyInfo();
    virtual void setPartType();

    using IBIS_MODEL::loadBankInfo;
    using IBIS_MODEL::loadDiffPinInfo;
    using IBIS_MODEL::loadPinInfo;
    using IBIS_MODEL::loadSysConfigPinInfo;
    using IBIS_MODEL::setPackage;
    using IBIS_MODEL::setPartType;

    void init(char const* family, NC_DESIGN* design, char const* designFile,
              char const* masterIbisFile);
    void run();
    void setPackage();
    void setPinInfo();
    using IBIS_MODEL::setPinInfo;
    char const* get_dir_name(CM_PAD_DIRECTION_TYPE direction);

    // SerDes AMI file set.
    void getAmiRxExecutableFile(std::string& path);
    void getAmiTxExecutableFile(std::string& path);
    void write_ami_files();
    void write_ami_parameter_file(char const* source, char const* target,
                                  std::vector<IB_IOBUF_CONFIG*>& configs);
    char* fill_in_ami_parameter_value(char* line, std::vector<IB_IOBUF_CONFIG*>& configs);
    bool find_key_value(char* key, char* value, std::vector<IB_IOBUF_CONFIG*>& configs);
    void calculate_ibis_parameter_value(char const* text, char* value);

    NC_DESIGN* _design;
    std::string _designFile;
    std::string _amiRxExecutable;
    std::string _amiTxExecutable;
    std::string _amiRxParameterFile;
    std::string _amiTxParameterFile;
    std::string _designBaseName;
};

#endif
