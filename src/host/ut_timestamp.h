#ifndef PAD2IBIS_HOST_UT_TIMESTAMP_H
#define PAD2IBIS_HOST_UT_TIMESTAMP_H

// The current time as text, for the "Generate date" line.
class UT_TIMESTAMP {
public:
    UT_TIMESTAMP();
    ~UT_TIMESTAMP();
    UT_TIMESTAMP(UT_TIMESTAMP const&) = delete;
    UT_TIMESTAMP& operator=(UT_TIMESTAMP const&) = delete;

    // Text in the form of C's ctime, line end included. Valid as long as
    // the object lives.
    char const* get_timestamp_string();

private:
    char _text[64];
};

#endif
