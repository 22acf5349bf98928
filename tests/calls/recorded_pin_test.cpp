// Records of the standard functions show neither a PIN nor its length.
#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"
#include "tests/secrets/planted_secret.h"

using RecordedPin = RecordedCall;

TEST_F(RecordedPin, PinOfAnyLength_RecordShowsTheSameMask) {
    auto pin = Bytes(PlantedSecret(1) + std::string(200, 'x'));
    Call(api.C_Login, 0x51, CKU_SO, pin.data(), pin.size());
    NewLog(R"(

10:15:30 <id>:STRTLogin {Sesn=81 User=0 PIN="********" }
10:15:30 <id>:FINILogin <rv>12345clks {})");
    OldLog(R"(
Command(Login, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x0);
   ByteString(SimpleText"********");
}
Command(Login, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, EmptyPin_RecordShowsTheSameMask) {
    auto pin = Bytes(PlantedSecret(2));
    Call(api.C_Login, 0x51, CKU_CONTEXT_SPECIFIC, pin.data(), 0);
    NewLog(R"(

10:15:30 <id>:STRTLogin {Sesn=81 User=2 PIN="********" }
10:15:30 <id>:FINILogin <rv>12345clks {})");
    OldLog(R"(
Command(Login, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x2);
   ByteString(SimpleText"********");
}
Command(Login, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, PinIsNull_RecordShowsNoValue) {
    Call(api.C_Login, 0x51, CKU_USER, nullptr, 6);
    NewLog(R"(

10:15:30 <id>:STRTLogin {Sesn=81 User=1 PIN="<null>" }
10:15:30 <id>:FINILogin <rv>12345clks {})");
    OldLog(R"(
Command(Login, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x1);
   ByteString(SimpleText"<null>");
}
Command(Login, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, PinOfANewTokenIsNull_RecordShowsNoValue) {
    CK_UTF8CHAR label[32];
    PutPadded(label, "Name of the token");
    Call(api.C_InitToken, 0x7, nullptr, 6, label);
    NewLog(R"(

10:15:30 <id>:STRTInitToken {Slot=7 PIN="<null>" label="Name of the token               " }
10:15:30 <id>:FINIInitToken <rv>12345clks {})");
    OldLog(R"(
Command(InitToken, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ByteString(SimpleText"<null>");
   ByteString(SimpleText"Name of the token               ");
}
Command(InitToken, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, NewPinOfAUserIsNull_RecordShowsNoValue) {
    Call(api.C_InitPIN, 0x51, nullptr, 6);
    NewLog(R"(

10:15:30 <id>:STRTInitPIN {Sesn=81 PIN="<null>" }
10:15:30 <id>:FINIInitPIN <rv>12345clks {})");
    OldLog(R"(
Command(InitPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
}
Command(InitPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, OldPinIsNull_RecordShowsNoValueForIt) {
    auto pin = Bytes(PlantedSecret(2));
    Call(api.C_SetPIN, 0x51, nullptr, 6, pin.data(), pin.size());
    NewLog(R"(

10:15:30 <id>:STRTSetPIN {Sesn=81 Old="<null>" New="********" }
10:15:30 <id>:FINISetPIN <rv>12345clks {})");
    OldLog(R"(
Command(SetPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
   ByteString(SimpleText"********");
}
Command(SetPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, NewPinIsNull_RecordShowsNoValueForIt) {
    auto pin = Bytes(PlantedSecret(2));
    Call(api.C_SetPIN, 0x51, pin.data(), pin.size(), nullptr, 6);
    NewLog(R"(

10:15:30 <id>:STRTSetPIN {Sesn=81 Old="********" New="<null>" }
10:15:30 <id>:FINISetPIN <rv>12345clks {})");
    OldLog(R"(
Command(SetPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"********");
   ByteString(SimpleText"<null>");
}
Command(SetPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_F(RecordedPin, AddressOfThePinCannotBeRead_RecordShowsTheMask) {
    MemoryBeforeAGap memory;
    Call(api.C_Login, 0x51, CKU_USER, static_cast<CK_UTF8CHAR_PTR>(memory.Gap()), 6);
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
}
