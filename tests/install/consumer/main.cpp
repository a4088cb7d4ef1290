// A host tool's smallest use of the installed package: identify a family,
// name a pad direction, read a model key back and set a design file option.

#include <cstdio>
#include <cstring>
#include <string>

#include <driver/basibsgen.h>
#include <host/msgmanager.h>
#include <writer/design_file_options.h>

int main()
{
    UT_MSGMAN::m_msgFlow = 0;
    std::string family;
    IBIS_MODEL::fetch_dev_name("KVA3-40E-6BG256C", family);
    IBS_GEN generator;
    char const* direction = generator.get_dir_name(CM_PAD_DIRECTION_IN);

    std::vector<IB_IOBUF_CONFIG*> configs;
    IB_IOBUF signal("clk", configs, "A1", "IN", "0");
    signal.model = ibs_new_model_string("lvc250axxxaaaaaaaaio");
    signal.setMode(IBIS_KEY_DIRECTION, "in");
    std::string field;
    signal.getMode(IBIS_KEY_DIRECTION, 2, field);

    IbsDesignFileOptions options;
    options.signalNameWidth = 20;
    ibsSetDesignFileOptions(options);

    if (family != "KVA3" || std::strcmp(direction, "IN") != 0 || field != "in" ||
        ibsDesignFileOptions().signalNameWidth != 20) {
        std::printf("consumer: unexpected results %s %s %s\n", family.c_str(), direction, field.c_str());
        return 1;
    }
    std::printf("consumer: %s %s %s\n", family.c_str(), direction, signal.model);
    return 0;
}
