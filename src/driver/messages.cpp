#include "driver/messages.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "driver/host_hook.h"
#include "host/msgmanager.h"

namespace {

struct MessageDef {
    char const* id;
    // Fallback text; each "%s" takes the next argument.
    char const* fallback;
    int exitCode;
    // Printed the way puts does it: a line end is added even behind a text
    // that has one already.
    bool byPuts;
};

MessageDef const messageTable[] = {
    {"1003", "Failed to load IBIS models.", 2, false},
    {"1004", "Failed to write out IBIS models.", 0, false},
    {"1005",
     "You can check the master ibis file at <Brinmark>/cae_library/ for models,\n"
     "if the model is not present in the master ibis file, please contact\n"
     "Corvane Technical Support to make a request for this model.",
     0, false},
    {"1010", "WARNING: Ibis Model \"%s\" for the signal \"%s\" is not available.\n", 0, false},
    {"1011",
     "WARNING: Ibis Model \"%s\" for the signal \"%s\" is not available. Substituting model "
     "\"%s\".\n",
     0, false},
    {"1012", "ERROR: Ibis file %s should have .ibs extension.\n", 2, false},
    {"1013", "Invalid device name.", 1, false},
    {"1014", "ERROR: report file %s should have .pad extension.\n", 2, false},
    {"1015", "Error opening file: %s\n", 1, false},
    {"1016", "Failed to load Iobuf information from the pad file %s.\n", 2, false},
    {"1017", "Created Design Models.", 0, false},
    {"1019",
     "\nNote: The IBIS models for True Differential have a known issue in the IBIS data. Please "
     "use TN HSPICE models instead to run simulation.\n",
     0, false},
    {"1022", "%s \n", 0, false},
    {"1023", "%s %s\n", 0, false},
    {"1024", "ERROR: Failed to load %s info from the ibs file.", 1, false},
    {"1025",
     "ERROR: The Design and Master IBIS files are different.\n"
     "       Part name is %s while IBIS file component name is %s.\n",
     1, false},
    {"1026", "WARNING: Package name \"%s\" is not found in the master ibis file: %s\n", 0, false},
    {"1027", "Unsupported Bank_vccio found %s.\n", 0, false},
    {"1028", "WARNING: Input model \"%s\" for signal \"%s\" is not available.\n", 0, false},
    {"1029", "Setting to \"%s\" Available IBIS model.\n", 0, false},
    {"1030", "\nGenerating: \"%s\"\n\n", 0, false},
    {"1031", "Design IBIS Models are generated for board level analysis.", 0, true},
    {"1033", "ERROR: The file '%s' is not exist.\n", 2, false},
    {"1034", "ERROR: Failed to create subdirectory '%s'.\n", 2, false},
    {"1035", "There is no SERDES used in the design.\n", 0, true},
    {"1036", "Design IBIS AMI Models are generated for board level analysis.", 0, true},
};

std::string fillIn(char const* format, std::initializer_list<char const*> args)
{
    std::string text;
    auto next = args.begin();
    for (char const* p = format; *p != '\0'; ++p) {
        if (p[0] == '%' && p[1] == 's') {
            if (next != args.end()) {
                text += *next ? *next : "(null)";
                ++next;
            }
            ++p;
        } else {
            text += *p;
        }
    }
    return text;
}

void post(char const* id, std::initializer_list<char const*> args)
{
    msgManager manager("padmodel");
    char const* const* a = args.begin();
    switch (args.size()) {
    case 0: manager.postMsg(id); break;
    case 1: manager.postMsg(id, a[0]); break;
    case 2: manager.postMsg(id, a[0], a[1]); break;
    default: manager.postMsg(id, a[0], a[1], a[2]); break;
    }
}

IbsHook<IbsReportObserver> reportObserver;
IbsHook<IbsOutputSink> outputSink;

} // namespace

std::string ibsText(char const* format, std::initializer_list<char const*> args)
{
    return fillIn(format, args);
}

void ibsSetOutputSink(IbsOutputSink sink, void* context)
{
    outputSink.set(sink, context);
}

void ibsPrint(IbsOutputKind kind, std::string const& text, IbsFileRole role, char const* path)
{
    if (outputSink) {
        outputSink.function(IbsOutput{kind, text, IBS_MSG_1003, {}, role, path}, outputSink.context);
        return;
    }
    std::fputs(text.c_str(), stdout);
}

void ibsSetReportObserver(IbsReportObserver observer, void* context)
{
    reportObserver.set(observer, context);
}

void ibsReport(IbsMessage message, std::initializer_list<char const*> args)
{
    MessageDef const& def = messageTable[message];
    if (reportObserver)
        reportObserver.function(message, args, reportObserver.context);
    if (UT_MSGMAN::m_msgFlow == 1) {
        post(def.id, args);
        return;
    }
    std::string text = fillIn(def.fallback, args);
    if (def.byPuts || text.empty() || text.back() != '\n')
        text += '\n';
    if (outputSink) {
        outputSink.function(IbsOutput{IBS_OUTPUT_REPORT, text, message, args, IBS_FILE_NONE, nullptr},
                            outputSink.context);
        return;
    }
    std::fputs(text.c_str(), stdout);
}

void ibsFatal(IbsMessage message, std::initializer_list<char const*> args)
{
    ibsReport(message, args);
    ibsExit(messageTable[message].exitCode);
}

void ibsExit(int code)
{
#ifdef PAD2IBIS_FATAL_THROWS
    // The fuzzing build turns the end of the process into an exception that
    // the fuzz target catches, so that one process can try many inputs.
    throw IbsFatalExit{code};
#else
    std::exit(code);
#endif
}
