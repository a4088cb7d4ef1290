#ifndef PAD2IBIS_APP_OPTIONS_H
#define PAD2IBIS_APP_OPTIONS_H

#include <string>

// What the command line asks for.
struct Options {
    bool help = false;
    bool version = false;
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
    std::string reportFile; // --report: where the resolution report goes
    std::string componentName; // --component-name: the design file's [Component]
    int truncate = 0;          // --truncate: width of the [Pin] signal names, 0 for no cut
    bool allModels = false;    // --all-models
    bool modelSelector = false; // --model-selector
    bool substituteNearest = false; // --substitute nearest
    std::string firstPath;  // pad report, or the design file of the AMI flow
    std::string secondPath; // master IBIS file, or the SerDes master
};

// Parses the arguments behind the program name. On a usage error returns
// false with a one-line reason in error.
bool parseOptions(int argc, char const* const* argv, Options& options, std::string& error);

// The usage text that --help prints.
char const* usageText();

#endif
