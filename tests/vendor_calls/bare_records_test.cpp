// The functions of which records show no argument: neither record has a child, whatever the call takes and
// returns.
#include <tuple>

#include "tests/vendor_calls/vendor_records.h"

namespace {

struct BareFunction {
    const char* name;
    const char* shown;  // in its records
};

void PrintTo(const BareFunction& function, std::ostream* out) { *out << function.name; }

constexpr BareFunction kBareFunctions[] = {
    {"CA_WaitForSlotEvent", "WaitForSlotEvent"},
    {"CA_RoleStateGet", "RoleStateGet"},
    {"CA_CreateContainerLoginChallenge", "CreateContainerLoginChallenge"},
    {"CA_OpenSessionWithAppID", "OpenSessionWithAppID"},
    {"CA_CloseApplicationID", "CloseApplicationID"},
    {"CA_GetSessionInfo", "GetSessionInfo"},
    {"CA_OpenSecureToken", "OpenSecureToken"},
    {"CA_CloseSecureToken", "CloseSecureToken"},
    {"CA_ListSecureTokenInit", "ListSecureTokenInit"},
    {"CA_ListSecureTokenUpdate", "ListSecureTokenUpdate"},
    {"CA_GetSecureElementMeta", "GetSecureElementMeta"},
    {"CA_InvokeServiceInit", "InvokeServiceInit"},
    {"CA_InvokeService", "InvokeService"},
    {"CA_InvokeServiceFinal", "InvokeServiceFinal"},
    {"CA_InvokeServiceAsynch", "InvokeServiceAsynch"},
    {"CA_InvokeServiceSinglePart", "InvokeServiceSinglePart"},
    {"CA_GetHSMStats", "GetHSMStats"},
    {"CA_GetClusterState", "GetClusterState"},
    {"CA_LockClusteredSlot", "LockClusteredSlot"},
    {"CA_UnlockClusteredSlot", "UnlockClusteredSlot"},
    {"CA_STCRegister", "STCRegister"},
    {"CA_STCDeregister", "STCDeregister"},
    {"CA_STCGetPubKey", "STCGetPubKey"},
    {"CA_STCGetClientsList", "STCGetClientsList"},
    {"CA_STCGetClientInfo", "STCGetClientInfo"},
    {"CA_STCGetPartPubKey", "STCGetPartPubKey"},
    {"CA_STCGetAdminPubKey", "STCGetAdminPubKey"},
    {"CA_STCSetCipherAlgorithm", "STCSetCipherAlgorithm"},
    {"CA_STCGetCipherAlgorithm", "STCGetCipherAlgorithm"},
    {"CA_STCClearCipherAlgorithm", "STCClearCipherAlgorithm"},
    {"CA_STCSetDigestAlgorithm", "STCSetDigestAlgorithm"},
    {"CA_STCGetDigestAlgorithm", "STCGetDigestAlgorithm"},
    {"CA_STCClearDigestAlgorithm", "STCClearDigestAlgorithm"},
    {"CA_STCSetKeyLifeTime", "STCSetKeyLifeTime"},
    {"CA_STCGetKeyLifeTime", "STCGetKeyLifeTime"},
    {"CA_STCSetKeyActivationTimeOut", "STCSetKeyActivationTimeOut"},
    {"CA_STCGetKeyActivationTimeOut", "STCGetKeyActivationTimeOut"},
    {"CA_STCSetMaxSessions", "STCSetMaxSessions"},
    {"CA_STCGetMaxSessions", "STCGetMaxSessions"},
    {"CA_STCSetSequenceWindowSize", "STCSetSequenceWindowSize"},
    {"CA_STCGetSequenceWindowSize", "STCGetSequenceWindowSize"},
    {"CA_STCIsEnabled", "STCIsEnabled"},
    {"CA_STCGetState", "STCGetState"},
    {"CA_STCGetCurrentKeyLife", "STCGetCurrentKeyLife"},
    {"CA_GetSlotIdForPhysicalSlot", "GetSlotIdForPhysicalSlot"},
    {"CA_GetSlotIdForContainer", "GetSlotIdForContainer"},
    {"CA_STCGetChannelID", "STCGetChannelID"},
    {"CA_STCGetCipherID", "STCGetCipherID"},
    {"CA_STCGetDigestID", "STCGetDigestID"},
    {"CA_STCGetCipherIDs", "STCGetCipherIDs"},
    {"CA_STCGetCipherNameByID", "STCGetCipherNameByID"},
    {"CA_STCGetDigestIDs", "STCGetDigestIDs"},
    {"CA_STCGetDigestNameByID", "STCGetDigestNameByID"},
    {"CA_GetServerInstanceBySlotID", "GetServerInstanceBySlotID"},
    {"CA_GetSlotListFromServerInstance", "GetSlotListFromServerInstance"},
    {"CA_PerformSelfTest", "PerformSelfTest"},
};

class BareVendorRecords : public VendorCallTest,
                          public testing::WithParamInterface<std::tuple<BareFunction, LogFormat>> {
protected:
    BareVendorRecords() : VendorCallTest(std::get<LogFormat>(GetParam())) {}

    static std::string Named(const std::string& text) {
        return ReplaceAll(text, "<name>", std::get<BareFunction>(GetParam()).shown);
    }
};

TEST_P(BareVendorRecords, ShowNothingButTheResult) {
    auto* const output = At<CK_ULONG>(0x12345100);
    const std::string start[] = {Named(R"(

10:15:30 <id>:STRT<name> {})"),
                                 Named(R"(
Command(<name>, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
})")};
    const std::string end[] = {Named(R"(
10:15:30 <id>:FINI<name> <rv>12345clks {})"),
                               Named(R"(
Command(<name>, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})")};
    Answer([=] { *output = 2001; });

    Call(std::get<BareFunction>(GetParam()).name, 1001, output, 1002);
    Starts(start[0], start[1]);
    Ends(kEveryResult, end[0], end[1]);

    Call(std::get<BareFunction>(GetParam()).name, 0, nullptr, 0);
    Starts(start[0], start[1]);
    Ends(kSuccess, end[0], end[1]);
}

std::string TestName(const testing::TestParamInfo<std::tuple<BareFunction, LogFormat>>& row) {
    const char* const format = std::get<LogFormat>(row.param) == LogFormat::kNew ? "_New" : "_Old";
    return std::get<BareFunction>(row.param).name + std::string(format);
}

INSTANTIATE_TEST_SUITE_P(Log, BareVendorRecords,
                         testing::Combine(testing::ValuesIn(kBareFunctions),
                                          testing::Values(LogFormat::kNew, LogFormat::kOld)),
                         TestName);

}  // namespace
