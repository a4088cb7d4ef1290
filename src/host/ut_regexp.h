#ifndef PAD2IBIS_HOST_UT_REGEXP_H
#define PAD2IBIS_HOST_UT_REGEXP_H

#include <string>

class UT_REGEXP;

// Result of a regular expression match. The first word is non-zero on a
// match; the rest locates the capture groups in the matched text.
struct UT_STRKEYS {
    long matched;
    int groups;
    long start[10];
    long end[10];
};

// The host's string object.
class UT_STROBJ {
public:
    UT_STROBJ();
    UT_STROBJ(char const* text);
    ~UT_STROBJ();

    // Matches the text from position start on.
    UT_STRKEYS match_reg_exp(UT_REGEXP const& re, unsigned long start) const;
    // The text of capture group n of a match on this text; 1 is the first.
    UT_STROBJ get_key(UT_STRKEYS const& keys, int n) const;
    // The characters of the text.
    char const* getstring(unsigned char flag) const;

private:
    std::string _text;
};

// A compiled regular expression (POSIX extended syntax: bracket sets, "^",
// "+", "*" and capture groups are what the callers use).
class UT_REGEXP {
public:
    UT_REGEXP();
    ~UT_REGEXP();
    UT_REGEXP(UT_REGEXP const&) = delete;
    UT_REGEXP& operator=(UT_REGEXP const&) = delete;

    // Compiles the pattern; a failed compile leaves the object invalid.
    bool compile(UT_STROBJ const& pattern);
    bool isValid() const { return _valid; }

private:
    friend class UT_STROBJ;
    bool _valid;
    void* _compiled;
};

#endif
