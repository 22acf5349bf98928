// These are the vendor's structures, as far as records show them.
#pragma once

// This structure holds the state of an M-of-N activation.
struct CA_M_OF_N_STATUS {
    unsigned long words[5];
};

struct CK_HA_MEMBER {
    char memberSerial[24];
    unsigned long memberStatus;
};

// This structure holds the state of a high-availability group. The first listSize members count.
struct CK_HA_STATUS {
    char groupSerial[24];
    CK_HA_MEMBER memberList[32];
    unsigned long listSize;
};

static_assert(sizeof(CK_HA_MEMBER) == 32 && sizeof(CK_HA_STATUS) == 24 + 32 * 32 + 8);
