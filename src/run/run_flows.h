#ifndef PAD2IBIS_RUN_RUN_FLOWS_H
#define PAD2IBIS_RUN_RUN_FLOWS_H

// The program's runs: the pad report flow and the SerDes flow, each in the
// legacy mode (the host exactly as the legacy flow has it) or the default
// mode (inputs read ahead of the generator, what it would misread refused
// before anything is written, and a closing summary). In both modes no
// input is read as a directory or a device, and no output is written over
// an input. Each returns the exit code, or ends the process with it.

#include "run/run_options.h"

// Sets the generator's and the host's process-wide flags and the design
// file options from the command line.
void applyRunOptions(RunOptions const& options);

int runPadFlow(RunOptions const& options);
int runAmiFlow(RunOptions const& options);

#endif
