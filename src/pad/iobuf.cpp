// The signal record and its attributes.

#include "driver/basibsgen.h"
#include "driver/load_time.h"
#include "driver/messages.h"
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
    std::string text = ibsText("Comp: %s\n Site: %s\n", {name, site});
    if (type != nullptr)
        text += ibsText(" Type: %s\n", {type});
    for (IB_IOBUF_CONFIG* config : configs)
        text += ibsText(" %s=%s \n", {config->key.c_str(), config->value.c_str()});
    if (model != nullptr)
        text += ibsText(" Model: %s\n", {model});
    text += "-----------------------\n";
    ibsPrint(IBS_OUTPUT_SIGNAL, text);
}
