#ifndef PAD2IBIS_HOST_UT_FILEMANAGER_H
#define PAD2IBIS_HOST_UT_FILEMANAGER_H

// File services of the host, reached through the one instance ut_file.
// exist, copy and mkdir take "\" as a separator too, as makeunixpath would
// turn it, so a path composed with mixed separators reaches the right file.
class UT_FILEMANAGER {
public:
    bool exist(char const* path);
    bool isabsolute(char const* path);
    void makeunixpath(char* path);
    bool copy(char const* from, char const* to);
    bool mkdir(char const* path);
    void getcwd(char* buf, unsigned short size);
};

extern UT_FILEMANAGER ut_file;

#endif
