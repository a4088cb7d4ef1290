#ifndef PAD2IBIS_HOST_UT_PATH_H
#define PAD2IBIS_HOST_UT_PATH_H

// Path services of the host. Each fills a caller buffer that has room for the
// whole path. Both "/" and "\" separate directories.

// The directory part, with its closing separator ("dir/x.ibs" gives "dir/");
// empty for a bare file name.
void ut_pathgethead(char const* path, char* head);

// The file name without directory and without extension.
void ut_pathgetbase(char const* path, char* base);

// The extension with its point (".ibs"); empty when the name has none.
void ut_pathgetext(char const* path, char* ext);

#endif
