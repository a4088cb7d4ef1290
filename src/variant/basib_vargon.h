#ifndef PAD2IBIS_VARIANT_BASIB_VARGON_H
#define PAD2IBIS_VARIANT_BASIB_VARGON_H

// The generator of the table-driven family. Its legal IO configurations are
// compiled in (legal_tables.h); after the master file is read they are
// expanded into three forests, one per signal direction, in which every
// root-to-leaf path is one legal configuration and the first child of a
// node is the preferred value of its attribute. A signal whose model is
// missing gets the nearest existing model of its forest instead.

#include <map>
#include <string>
#include <vector>

#include "driver/basibsgen.h"
#include "variant/legal_tables.h"

// One node of an alternate model forest.
class BASIB_ALT_MODEL_INFO {
public:
    BASIB_ALT_MODEL_INFO(std::string level, std::string key, BASIB_ALT_MODEL_INFO* owner);
    // Deep copy: the copy starts with the same owner as other, and each
    // child copy is owned by the copy.
    BASIB_ALT_MODEL_INFO(BASIB_ALT_MODEL_INFO* other);
    // Deletes the children, which delete theirs.
    ~BASIB_ALT_MODEL_INFO();
    BASIB_ALT_MODEL_INFO(BASIB_ALT_MODEL_INFO const&) = delete;
    BASIB_ALT_MODEL_INFO& operator=(BASIB_ALT_MODEL_INFO const&) = delete;

    void setLevelName(std::string level);
    void setKeyValue(std::string key);
    void setOwner(BASIB_ALT_MODEL_INFO* owner);
    char const* GetLevel();
    char const* GetKeyValue();
    BASIB_ALT_MODEL_INFO* GetOwner();
    std::vector<BASIB_ALT_MODEL_INFO*>& GetChildren();
    int GetNumChildren();
    BASIB_ALT_MODEL_INFO* GetFirstChild();
    // The first child, in child order, whose key is exactly key.
    BASIB_ALT_MODEL_INFO* FindChild(std::string key);
    // Owns child, at the front or at the end of the children.
    void addChild(BASIB_ALT_MODEL_INFO* child, bool atFront);
    // Forgets the children without deleting them.
    void RemoveChildren();
    // The subtree on standard output, first child on its owner's line.
    void printMe(int indent);

    std::string _levelName;
    std::string _keyValue;
    BASIB_ALT_MODEL_INFO* _owner;
    std::vector<BASIB_ALT_MODEL_INFO*> _children;
};

// Byte-wise order of constant character strings.
struct VARGON_ltstr {
    bool operator()(char const* a, char const* b) const;
};

// A forest: the first six characters of a model key to the roots with that
// IO type and voltage, in table order.
typedef std::map<std::string, std::vector<BASIB_ALT_MODEL_INFO*>*> BASIB_ALT_MODEL_MAP;

// The table-driven family's rule for the end of the naming section: true
// when keyFieldPresent, the flags of the 21 model key positions, says that
// every table this family needs has been read. Its generator's
// hasDoneLoadingIoMaps asks it after each table.
bool vargonNamingComplete(bool const* keyFieldPresent);

class IBIS_MODEL_VARGON : public IBIS_MODEL {
public:
    IBIS_MODEL_VARGON(char const* family, char const* padFile, char const* masterIbisFile);
    ~IBIS_MODEL_VARGON() override;

    bool hasDoneLoadingIoMaps() override;
    int getVoltage(std::string& ioType) override;
    bool loadAvailableModels() override;
    void setDesignModels() override;

    // Legal configuration tables into forests.
    void buildAltVargonModels();
    void buildAltModelList(BASIB_ALT_MODEL_MAP& models, char const*** table, int cells,
                           char const** columns, int columnCount, char const* direction);
    void printAltModelLists();
    std::string translateColHeader(char const* column);
    std::string translateCellValue(std::string header, char const* value, char const* direction);

    // Substitutes for a missing model.
    BASIB_ALT_MODEL_INFO* getNodeForModelName(std::vector<BASIB_ALT_MODEL_INFO*>& roots,
                                              std::string modelName);
    std::string getNextAltModelName(BASIB_ALT_MODEL_INFO** node);
    std::string getAvailableAltModelName(std::string portType, std::string modelName);

    BASIB_ALT_MODEL_MAP _outputAltModels;
    BASIB_ALT_MODEL_MAP _inputAltModels;
    BASIB_ALT_MODEL_MAP _bidirAltModels;
};

#endif
