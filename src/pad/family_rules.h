#ifndef PAD2IBIS_PAD_FAMILY_RULES_H
#define PAD2IBIS_PAD_FAMILY_RULES_H

// The device families the generator knows.

#include <vector>

// The family words a host may pass to a generator: those that a pad
// report's part type gives, then those of the database flow that the family
// rules also compare with.
std::vector<char const*> const& ibsFamilyWords();

#endif
