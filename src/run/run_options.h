#ifndef PAD2IBIS_RUN_RUN_OPTIONS_H
#define PAD2IBIS_RUN_RUN_OPTIONS_H

// What a run of the program is asked to do: the command line, parsed.

#include <string>

struct RunOptions {
    bool help = false;
    bool version = false;
    // The host exactly as the legacy flow has it: what it prints, its exit
    // codes and its files; without it the run refuses what the readers would
    // misread and says what it did.
    bool legacy = false;
    bool quiet = false;   // only warnings, errors and the closing summary
    bool verbose = false; // also the listing of the pad report's signals
    bool ami = false;
    std::string channelsFile;
    std::string family;
    bool familyGiven = false;
    bool vargon = false;
    bool ncd = false;
    bool brinmark = false;
    bool dphy = false;
    bool msgflow = false;
    int btn = 0;
    bool dumpAltModels = false;
    std::string reportFile;    // --report: where the resolution report goes
    std::string componentName; // --component-name: the design file's [Component]
    int truncate = 0;          // --truncate: width of the [Pin] signal names, 0 for no cut
    bool allModels = false;    // --all-models
    bool modelSelector = false; // --model-selector
    bool substituteNearest = false; // --substitute nearest
    bool pinParasitics = false; // --pin-parasitics: R_pin, L_pin, C_pin on each [Pin] row
    bool packageModel = false;  // --package-model: the package model of the design's pins in the design file
    std::string firstPath;  // pad report, or the design file of the AMI flow
    std::string secondPath; // master IBIS file, or the SerDes master
};

#endif
