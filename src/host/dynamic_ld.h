#ifndef PAD2IBIS_HOST_DYNAMIC_LD_H
#define PAD2IBIS_HOST_DYNAMIC_LD_H

// Module ids of the host's loadable libraries.
struct CM_DYNAMIC_LD { static int dynamic_id; };
struct NC_DYNAMIC_LD { static int dynamic_id; static int dynamic_ncgenspeed; };
struct NP_DYNAMIC_LD { static int dynamic_id; };
struct PO_DYNAMIC_LD { static int dynamic_id; };

// A point of the host's geometry.
struct UT_POINT {
    int x;
    int y;
};

#endif
