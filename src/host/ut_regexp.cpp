#include "host/ut_regexp.h"

#include <regex.h>

UT_STROBJ::UT_STROBJ() = default;

UT_STROBJ::UT_STROBJ(char const* text) : _text(text ? text : "") {}

UT_STROBJ::~UT_STROBJ() = default;

UT_STRKEYS UT_STROBJ::match_reg_exp(UT_REGEXP const& re, unsigned long start) const
{
    UT_STRKEYS keys = {};
    if (!re._valid || start > _text.size())
        return keys;
    regmatch_t groups[10];
    if (regexec(static_cast<regex_t*>(re._compiled), _text.c_str() + start, 10, groups, 0) != 0)
        return keys;
    keys.matched = 1;
    keys.groups = 10;
    for (int i = 0; i < 10; ++i) {
        keys.start[i] = groups[i].rm_so < 0 ? -1 : static_cast<long>(groups[i].rm_so + start);
        keys.end[i] = groups[i].rm_eo < 0 ? -1 : static_cast<long>(groups[i].rm_eo + start);
    }
    return keys;
}

UT_STROBJ UT_STROBJ::get_key(UT_STRKEYS const& keys, int n) const
{
    if (!keys.matched || n < 0 || n >= keys.groups || keys.start[n] < 0)
        return UT_STROBJ("");
    return UT_STROBJ(_text.substr(keys.start[n], keys.end[n] - keys.start[n]).c_str());
}

char const* UT_STROBJ::getstring(unsigned char /*flag*/) const
{
    return _text.c_str();
}

UT_REGEXP::UT_REGEXP() : _valid(false), _compiled(new regex_t) {}

UT_REGEXP::~UT_REGEXP()
{
    regex_t* compiled = static_cast<regex_t*>(_compiled);
    if (_valid)
        regfree(compiled);
    delete compiled;
}

bool UT_REGEXP::compile(UT_STROBJ const& pattern)
{
    regex_t* compiled = static_cast<regex_t*>(_compiled);
    if (_valid)
        regfree(compiled);
    _valid = regcomp(compiled, pattern.getstring(0), REG_EXTENDED) == 0;
    return _valid;
}
