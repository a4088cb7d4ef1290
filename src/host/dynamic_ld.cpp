#include "host/dynamic_ld.h"

int CM_DYNAMIC_LD::dynamic_id = 1;
int NC_DYNAMIC_LD::dynamic_id = 2;
int NC_DYNAMIC_LD::dynamic_ncgenspeed = 3;
int NP_DYNAMIC_LD::dynamic_id = 4;
int PO_DYNAMIC_LD::dynamic_id = 5;
