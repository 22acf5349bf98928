// The records of these functions show no argument. Neither record has a child, whatever the call takes and
// returns.
#include <tuple>

#include "tests/vendor_calls/vendor_records.h"

namespace {

constexpr const char* kBareFunctions[] = {
    "CA_WaitForSlotEvent",
    "CA_RoleStateGet",
    "CA_CreateContainerLoginChallenge",
    "CA_OpenSessionWithAppID",
    "CA_CloseApplicationID",
    "CA_GetSessionInfo",
    "CA_OpenSecureToken",
    "CA_CloseSecureToken",
    "CA_ListSecureTokenInit",
    "CA_ListSecureTokenUpdate",
    "CA_GetSecureElementMeta",
    "CA_InvokeServiceInit",
    "CA_InvokeService",
    "CA_InvokeServiceFinal",
    "CA_InvokeServiceAsynch",
    "CA_InvokeServiceSinglePart",
    "CA_GetHSMStats",
    "CA_GetClusterState",
    "CA_LockClusteredSlot",
    "CA_UnlockClusteredSlot",
    "CA_STCRegister",
    "CA_STCDeregister",
    "CA_STCGetPubKey",
    "CA_STCGetClientsList",
    "CA_STCGetClientInfo",
    "CA_STCGetPartPubKey",
    "CA_STCGetAdminPubKey",
    "CA_STCSetCipherAlgorithm",
    "CA_STCGetCipherAlgorithm",
    "CA_STCClearCipherAlgorithm",
    "CA_STCSetDigestAlgorithm",
    "CA_STCGetDigestAlgorithm",
    "CA_STCClearDigestAlgorithm",
    "CA_STCSetKeyLifeTime",
    "CA_STCGetKeyLifeTime",
    "CA_STCSetKeyActivationTimeOut",
    "CA_STCGetKeyActivationTimeOut",
    "CA_STCSetMaxSessions",
    "CA_STCGetMaxSessions",
    "CA_STCSetSequenceWindowSize",
    "CA_STCGetSequenceWindowSize",
    "CA_STCIsEnabled",
    "CA_STCGetState",
    "CA_STCGetCurrentKeyLife",
    "CA_GetSlotIdForPhysicalSlot",
    "CA_GetSlotIdForContainer",
    "CA_STCGetChannelID",
    "CA_STCGetCipherID",
    "CA_STCGetDigestID",
    "CA_STCGetCipherIDs",
    "CA_STCGetCipherNameByID",
    "CA_STCGetDigestIDs",
    "CA_STCGetDigestNameByID",
    "CA_GetServerInstanceBySlotID",
    "CA_GetSlotListFromServerInstance",
    "CA_PerformSelfTest",
};

class BareVendorRecords : public VendorCallTest,
                          public testing::WithParamInterface<std::tuple<const char*, LogFormat>> {
protected:
    BareVendorRecords() : VendorCallTest(std::get<LogFormat>(GetParam())) {}
};

TEST_P(BareVendorRecords, BareFunction_RecordsShowOnlyTheResult) {
    auto* const output = At<CK_ULONG>(0x12345100);
    const char* const name = std::get<const char*>(GetParam());
    Answer([=] { *output = 2001; });

    Call(name, 1001, output, 1002);
    Starts();
    Ends(kEveryResult);

    Call(name, 0, nullptr, 0);
    Starts();
    Ends(kSuccess);
}

std::string TestName(const testing::TestParamInfo<std::tuple<const char*, LogFormat>>& row) {
    const char* const format = std::get<LogFormat>(row.param) == LogFormat::kNew ? "_New" : "_Old";
    return std::get<const char*>(row.param) + std::string(format);
}

INSTANTIATE_TEST_SUITE_P(Log, BareVendorRecords,
                         testing::Combine(testing::ValuesIn(kBareFunctions),
                                          testing::Values(LogFormat::kNew, LogFormat::kOld)),
                         TestName);

}  // namespace
