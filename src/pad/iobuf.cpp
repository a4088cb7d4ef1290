// The signal record and its attributes.

#include <cstdio>

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "host/ut_string.h"

IB_IOBUF_CONFIG::IB_IOBUF_CONFIG(std::string key, std::string value)
{
    if (!key.empty())
        this->key = key;
    if (!value.empty())
        this->value = value;
}

IB_IOBUF::IB_IOBUF(char const* name, std::vector<IB_IOBUF_CONFIG*> const& configs,
                   char const* site, char const* type, char const* bank)
    : name(ut_strdup(name)),
      configs(configs),
      site(ut_strdup(site)),
      model(nullptr),
      type(ut_strdup(type)),
      status(1),
      masterPin(nullptr),
      bank(ut_strdup(bank))
{
}

void IB_IOBUF::print()
{
    std::printf("Comp: %s\n", name);
    std::printf(" Site: %s\n", site);
    if (type != nullptr)
        std::printf(" Type: %s\n", type);
    for (IB_IOBUF_CONFIG* config : configs)
        std::printf(" %s=%s \n", config->key.c_str(), config->value.c_str());
    if (model != nullptr)
        std::printf(" Model: %s\n", model);
    std::printf("-----------------------\n");
}
