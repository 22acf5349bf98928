#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"
#include "tests/secrets/planted_secret.h"

TEST_F(RecordedCall, C_OpenSession) {
    int application = 0;
    const CK_NOTIFY notify = [](CK_SESSION_HANDLE, CK_NOTIFICATION, void*) -> CK_RV { return CKR_OK; };
    CK_SESSION_HANDLE session = 0;
    Answer([&] { session = 0x51; });
    Call(api.C_OpenSession, 0x7, CKF_SERIAL_SESSION | CKF_RW_SESSION, &application, notify, &session);
    NewLog(R"(

10:15:30 <id>:STRTOpenSession {Slot=7 Flgs=6 }
10:15:30 <id>:FINIOpenSession <rv>12345clks {Sesn=81 })");
    OldLog(R"(
Command(OpenSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x6);
}
Command(OpenSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7},
        {"kind":"Flags","value":6})",
           R"(
        {"kind":"SessionHandle","value":81})",
           R"("slot":7,"session":81,)");
}

TEST_F(RecordedCall, C_CloseSession) {
    Call(api.C_CloseSession, 0x51);
    NewLog(R"(

10:15:30 <id>:STRTCloseSession {Sesn=81 }
10:15:30 <id>:FINICloseSession <rv>12345clks {})");
    OldLog(R"(
Command(CloseSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(CloseSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
           "");
}

TEST_F(RecordedCall, C_CloseAllSessions) {
    Call(api.C_CloseAllSessions, 0x7);
    NewLog(R"(

10:15:30 <id>:STRTCloseAllSessions {Slot=7 }
10:15:30 <id>:FINICloseAllSessions <rv>12345clks {})");
    OldLog(R"(
Command(CloseAllSessions, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(CloseAllSessions, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7})",
           "");
}

TEST_F(RecordedCall, C_GetSessionInfo) {
    CK_SESSION_INFO info = {};
    Answer([&] { info = {0x7, CKS_RW_USER_FUNCTIONS, CKF_SERIAL_SESSION | CKF_RW_SESSION, 0x123456789}; });
    Call(api.C_GetSessionInfo, 0x51, &info);
    NewLog(R"(

10:15:30 <id>:STRTGetSessionInfo {Sesn=81 }
10:15:30 <id>:FINIGetSessionInfo <rv>12345clks {SesInfo=(7,3,0x6,0x23456789) })");
    OldLog(R"(
Command(GetSessionInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(GetSessionInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionInfo(0x7,0x3,0x6,0x23456789);
})");
    OutAfterFailure(R"({"kind":"SessionInfo"})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
           R"(
        {"kind":"SessionInfo","slotID":7,"state":3,"flags":6,"ulDeviceError":4886718345})");
}

TEST_F(RecordedCall, C_GetOperationState) {
    std::vector<CK_BYTE> state(8);
    CK_ULONG length = 0;
    Before([&] { length = state.size(); });
    Answer([&] { Put(Bytes("\x80\x81\x82"), state, length); });
    Call(api.C_GetOperationState, 0x51, state.data(), &length);
    NewLog(R"(

10:15:30 <id>:STRTGetOperationState {Sesn=81 }
10:15:30 <id>:FINIGetOperationState <rv>12345clks {"808182" })");
    OldLog(R"(
Command(GetOperationState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(GetOperationState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(Numeric"808182");
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                      R"(
        {"kind":"ByteString","size":3})");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
                   R"(
        {"kind":"ByteString","size":3,"hex":"808182"})");
}

TEST_F(RecordedCall, C_SetOperationState) {
    auto state = Bytes("saved state");
    Call(api.C_SetOperationState, 0x51, state.data(), state.size(), 0x62, 0x63);
    NewLog(R"(

10:15:30 <id>:STRTSetOperationState {Sesn=81 "saved state" Obj=98 Obj=99 }
10:15:30 <id>:FINISetOperationState <rv>12345clks {})");
    OldLog(R"(
Command(SetOperationState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"saved state");
   ObjectHandle(0x62);
   ObjectHandle(0x63);
}
Command(SetOperationState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ObjectHandle","value":99})",
                      "");
    EventsWithData(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ByteString","size":11,"text":"saved state"},
        {"kind":"ObjectHandle","value":98},
        {"kind":"ObjectHandle","value":99})",
                   "");
}

TEST_F(RecordedCall, C_Login) {
    auto pin = Bytes(PlantedSecret(1));
    Call(api.C_Login, 0x51, CKU_USER, pin.data(), pin.size());
    NewLog(R"(

10:15:30 <id>:STRTLogin {Sesn=81 User=1 PIN="********" }
10:15:30 <id>:FINILogin <rv>12345clks {})");
    OldLog(R"(
Command(Login, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x1);
   ByteString(SimpleText"********");
}
Command(Login, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"user":1,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"UserType","value":1},
        {"kind":"PIN"})",
           "");
}

TEST_F(RecordedCall, C_Logout) {
    Call(api.C_Logout, 0x1122334455667788);
    NewLog(R"(

10:15:30 <id>:STRTLogout {Sesn=1234605616436508552 }
10:15:30 <id>:FINILogout <rv>12345clks {})");
    OldLog(R"(
Command(Logout, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x55667788);
}
Command(Logout, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":"1234605616436508552",)", R"(
        {"kind":"SessionHandle","value":"1234605616436508552"})",
           "");
}
