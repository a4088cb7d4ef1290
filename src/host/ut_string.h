#ifndef PAD2IBIS_HOST_UT_STRING_H
#define PAD2IBIS_HOST_UT_STRING_H

// String services of the host. All work in place on caller buffers and none
// allocates, except ut_strdup.

// Skips blanks at the start of src, copies the text up to the first character
// of delims into dst and removes that text and that one delimiter from src, so
// that the next call continues behind it. Without a delimiter the whole rest
// is the token and src becomes empty; an empty src gives an empty dst. A line
// that starts with a delimiter yields an empty first token. dst must have room
// for the whole of src. flag is always 0. Returns the length of the token.
int ut_strgettoken(char* src, char* dst, char const* delims, int flag);

// Removes white space from both ends, in place. Returns buf.
char* ut_strtrim(char* buf);

// Upper or lower cases buf in place. Returns buf.
char* ut_strupr(char* buf);
char* ut_strlwr(char* buf);

// Compare without regard to case; 0 means equal.
int ut_stricmp(char const* a, char const* b);
int ut_strincmp(char const* a, char const* b, int n);

// A heap copy that array delete releases.
char* ut_strdup(char const* text);

#endif
