// Which function a record is about, which part of it, and which end of the call.
#pragma once

#include <cstdint>

// The numbers are part of the log's format and fixed. The functions of the vendor, from kVendorCommands on,
// have their numbers and names in functions/functions.def.
enum CommandType : std::uint32_t {
    kInitialize = 0,
    kFinalize = 1,
    kGetFunctionList = 2,
    kTerminate = 3,
    kGetInfo = 4,
    kGetSlotList = 5,
    kGetSlotInfo = 6,
    kGetTokenInfo = 7,
    kGetMechanismList = 8,
    kGetMechanismInfo = 9,
    kWaitForSlotEvent = 10,
    kInitToken = 11,
    kInitPIN = 12,
    kSetPIN = 13,
    kOpenSession = 15,
    kCloseSession = 16,
    kCloseAllSessions = 17,
    kGetSessionInfo = 18,
    kLogin = 19,
    kLogout = 20,
    kGetOperationState = 21,
    kSetOperationState = 22,
    kCreateObject = 23,
    kCopyObject = 24,
    kDestroyObject = 25,
    kGetObjectSize = 26,
    kGetAttributeValue = 27,
    kSetAttributeValue = 28,
    kFindObjects = 29,
    kEncrypt = 30,
    kDecrypt = 31,
    kDigest = 32,
    kSign = 33,
    kSignRecover = 34,
    kVerify = 35,
    kVerifyRecover = 36,
    kGenerateKey = 37,
    kGenerateKeyPair = 38,
    kWrapKey = 39,
    kUnwrapKey = 40,
    kDeriveKey = 41,
    kSeedRandom = 42,
    kGenerateRandom = 43,
    kGetFunctionStatus = 44,  // has no name in the log
    kCancelFunction = 45,     // has no name in the log
    kDigestEncrypt = 46,
    kDecryptDigest = 47,
    kSignEncrypt = 48,
    kDecryptVerify = 49,
    kPerformSelfTest = 50,  // has no name in the log
    kVendorCommands = 51,
};

enum CommandSpecifier : std::uint32_t { kNone = 0, kInit = 1, kUpdate = 2, kFinal = 3, kKey = 4 };

enum CommandPhase : std::uint32_t { kStart = 0, kEnd = 1 };
