// The key "LoggingMask" selects functions by these classes.
#pragma once

enum FunctionClass : int {
    GEN_FUNC = 0x100,           // general-purpose functions
    SLOT_TOKEN_FUNC = 0x200,    // slot and token management
    SESSION_FUNC = 0x400,       // session management
    OBJ_MNGMNT_FUNC = 0x800,    // object management
    ENC_DEC_FUNC = 0x1000,      // encryption and decryption
    DIGEST_FUNC = 0x2000,       // message digesting
    SIGN_VERIFY_FUNC = 0x4000,  // signing and verifying
    KEY_MNGMNT_FUNC = 0x8000,   // key management
    MISC_FUNC = 0x10000,        // random numbers, parallel functions
    ALL_FUNC = 0x20000,         // every function, whatever its class
    QUORVANTH_FUNC = 0x40000,   // the vendor's, unless in SLOT_TOKEN_FUNC
};
