#ifndef PAD2IBIS_DRIVER_MESSAGES_H
#define PAD2IBIS_DRIVER_MESSAGES_H

// The one reporting seam of the generator. Every reportable event has an id
// of the "padmodel" group and a fallback text: with an active message flow
// (UT_MSGMAN::m_msgFlow == 1) the id is posted with its arguments, otherwise
// the fallback text goes to standard output.

#include <initializer_list>
#include <string>

enum IbsMessage {
    IBS_MSG_1003, // Failed to load IBIS models.
    IBS_MSG_1004, // Failed to write out IBIS models.
    IBS_MSG_1005, // advice on missing models
    IBS_MSG_1010, // model not available
    IBS_MSG_1011, // model not available, substituted
    IBS_MSG_1012, // master file without .ibs
    IBS_MSG_1013, // invalid device name
    IBS_MSG_1014, // pad report without .pad
    IBS_MSG_1015, // file cannot be opened
    IBS_MSG_1016, // no signals in the pad report
    IBS_MSG_1017, // Created Design Models.
    IBS_MSG_1019, // true differential note
    IBS_MSG_1022, // naming map heading
    IBS_MSG_1023, // naming map row
    IBS_MSG_1024, // empty naming table
    IBS_MSG_1025, // design and master files differ
    IBS_MSG_1026, // package not in the master file
    IBS_MSG_1027, // unsupported bank supply
    IBS_MSG_1028, // input model not available
    IBS_MSG_1029, // falling back on the bidirectional model
    IBS_MSG_1030, // Generating: path
    IBS_MSG_1031, // design models generated
    IBS_MSG_1033, // a file of the SerDes set is missing
    IBS_MSG_1034, // subdirectory cannot be made
    IBS_MSG_1035, // no SerDes in the design
    IBS_MSG_1036  // AMI models generated
};

// Posts or prints the message with its string arguments; goes on.
void ibsReport(IbsMessage message, std::initializer_list<char const*> args = {});

// Reports the message and ends the process with the message's exit code.
[[noreturn]] void ibsFatal(IbsMessage message, std::initializer_list<char const*> args = {});

// A host that wants to know what a run reported, beside what is printed or
// posted, installs an observer. It sees every report, fatal ones included,
// just before it is printed or posted, with the message and its arguments;
// what it does changes nothing of the report itself. Null removes it.
using IbsReportObserver = void (*)(IbsMessage message, std::initializer_list<char const*> args,
                                   void* context);
void ibsSetReportObserver(IbsReportObserver observer, void* context = nullptr);

// What the generator writes on standard output, by kind: the fallback text of
// a report (when no message flow is active), and the texts it prints of its
// own, which go to standard output whatever the message flow.
enum IbsOutputKind {
    IBS_OUTPUT_REPORT,       // a report's fallback text
    IBS_OUTPUT_SIGNAL,       // one signal's record in the listing of the pad report
    IBS_OUTPUT_SPACING,      // blank lines and the heads of lists
    IBS_OUTPUT_FILE_WRITTEN, // a file about to be copied or written
    IBS_OUTPUT_FILE_MISSING, // a file to copy that is not there: it is left out
    IBS_OUTPUT_FILE_FAILED   // a file that cannot be read or written; the run ends next
};

// Which file an output of the file kinds is about.
enum IbsFileRole {
    IBS_FILE_NONE,
    IBS_FILE_COMPANION,      // a numbered copy of the companion chip's IBIS file
    IBS_FILE_PACKAGE,        // the package model file beside the design file
    IBS_FILE_SERDES_MASTER,  // the SerDes master's copy in the AMI set
    IBS_FILE_RX_EXECUTABLE,  // the receive AMI executable's copy
    IBS_FILE_TX_EXECUTABLE,  // the transmit AMI executable's copy
    IBS_FILE_RX_PARAMETERS,  // a channel's receive parameter file
    IBS_FILE_TX_PARAMETERS,  // a channel's transmit parameter file
    IBS_FILE_TEMPLATE        // a parameter template, read for a parameter file
};

struct IbsOutput {
    IbsOutputKind kind;
    std::string const& text; // the bytes that go to standard output
    IbsMessage message;      // IBS_OUTPUT_REPORT: which report
    std::initializer_list<char const*> args; // IBS_OUTPUT_REPORT: its arguments
    IbsFileRole role;        // the file kinds: which file
    char const* path;        // the file kinds: its path, as the text shows it
};

// A host that shows the generator's output its own way installs a sink: from
// then on every text that would go to standard output is handed to the sink
// instead, and nothing is printed. Null puts standard output back. The sink
// may end the process; a fatal report's exit follows it otherwise.
using IbsOutputSink = void (*)(IbsOutput const& output, void* context);
void ibsSetOutputSink(IbsOutputSink sink, void* context = nullptr);

// format with each "%s" replaced by the next argument (a null one by
// "(null)"): the texts that the generator prints of its own.
std::string ibsText(char const* format, std::initializer_list<char const*> args);

// Writes text to standard output, or hands it to the sink.
void ibsPrint(IbsOutputKind kind, std::string const& text, IbsFileRole role = IBS_FILE_NONE,
              char const* path = nullptr);

// Ends the process with the given exit code. Output written so far stays.
[[noreturn]] void ibsExit(int code);

// What ibsExit throws instead of ending the process in a build with
// PAD2IBIS_FATAL_THROWS defined (the fuzzing build).
struct IbsFatalExit {
    int code;
};

#endif
