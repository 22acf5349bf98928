#pragma once

// These are the standard's commands that have a name, each with the name that records show. A command of the
// vendor has the name of its function in tests/expected_functions.def, without "CA_".

struct ExpectedCommandName {
    unsigned type;
    const char* name;
};

inline constexpr ExpectedCommandName kExpectedStandardCommandNames[] = {
    {0, "Initialize"},
    {1, "Finalize"},
    {2, "GetFunctionList"},
    {3, "Terminate"},
    {4, "GetInfo"},
    {5, "GetSlotList"},
    {6, "GetSlotInfo"},
    {7, "GetTokenInfo"},
    {8, "GetMechanismList"},
    {9, "GetMechanismInfo"},
    {10, "WaitForSlotEvent"},
    {11, "InitToken"},
    {12, "InitPIN"},
    {13, "SetPIN"},
    {15, "OpenSession"},
    {16, "CloseSession"},
    {17, "CloseAllSessions"},
    {18, "GetSessionInfo"},
    {19, "Login"},
    {20, "Logout"},
    {21, "GetOperationState"},
    {22, "SetOperationState"},
    {23, "CreateObject"},
    {24, "CopyObject"},
    {25, "DestroyObject"},
    {26, "GetObjectSize"},
    {27, "GetAttributeValue"},
    {28, "SetAttributeValue"},
    {29, "FindObjects"},
    {30, "Encrypt"},
    {31, "Decrypt"},
    {32, "Digest"},
    {33, "Sign"},
    {34, "SignRecover"},
    {35, "Verify"},
    {36, "VerifyRecover"},
    {37, "GenerateKey"},
    {38, "GenerateKeyPair"},
    {39, "WrapKey"},
    {40, "UnwrapKey"},
    {41, "DeriveKey"},
    {42, "SeedRandom"},
    {43, "GenerateRandom"},
    {46, "DigestEncrypt"},
    {47, "DecryptDigest"},
    {48, "SignEncrypt"},
    {49, "DecryptVerify"},
};
