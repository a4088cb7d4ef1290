#ifndef PAD2IBIS_APP_CHECK_COMMAND_H
#define PAD2IBIS_APP_CHECK_COMMAND_H

// pad2ibis check [--master] [--family WORD] FILE...
// pad2ibis check --channels CHANNELS_FILE TEMPLATE.ami...
// Prints the checker's findings and a count line: design IBIS files, master
// files with --master, AMI parameter files (known by their ".ami" ending),
// or a channels file against its templates. Returns the exit status: 0
// without errors, 1 with one, 2 for a usage error or a file that cannot be
// read.
int runCheckCommand(int argc, char const* const* argv);

#endif
