#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_Initialize) {
    CK_C_INITIALIZE_ARGS initArgs = {};
    Call(api.C_Initialize, &initArgs);
    NewLog(R"(

10:15:30 <id>:STRTInitialize {}
10:15:30 <id>:FINIInitialize <rv>12345clks {})");
    OldLog(R"(
Command(Initialize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(Initialize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events("", "", "");
}

TEST_F(RecordedCall, C_Finalize) {
    int reserved = 0;
    Call(api.C_Finalize, &reserved);
    NewLog(R"(

10:15:30 <id>:STRTFinalize {}
10:15:30 <id>:FINIFinalize <rv>12345clks {})");
    OldLog(R"(
Command(Finalize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(Finalize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events("", "", "");
}

TEST_F(RecordedCall, C_GetInfo) {
    CK_INFO info = {};
    Answer([&] {
        info.cryptokiVersion = {2, 20};
        PutPadded(info.manufacturerID, "Maker of tokens");
        info.flags = 0x81;
        PutPadded(info.libraryDescription, "Library without a record");
        info.libraryVersion = {5, 6};
    });
    Call(api.C_GetInfo, &info);
    NewLog(R"(

10:15:30 <id>:STRTGetInfo {}
10:15:30 <id>:FINIGetInfo <rv>12345clks {Info={"0214" "Maker of tokens                 " Flgs=129 } })");
    OldLog(R"(
Command(GetInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(GetInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   Info
   {
      ByteString(Numeric"0214");
      ByteString(SimpleText"Maker of tokens                 ");
      Flags(0x81);
   };
})");
    OutAfterFailure(R"({"kind":"Info"})");
    Events("", "", R"(
        {"kind":"Info","cryptokiVersion":{"major":2,"minor":20},"manufacturerID":"Maker of tokens","flags":129})");
}

TEST_F(RecordedCall, C_GetFunctionList) {
    CK_FUNCTION_LIST* list = nullptr;
    Call(api.C_GetFunctionList, &list);
    NewLog(R"(

10:15:30 <id>:STRTGetFunctionList {}
10:15:30 <id>:FINIGetFunctionList <rv>12345clks {})");
    OldLog(R"(
Command(GetFunctionList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
}
Command(GetFunctionList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events("", "", "");
}
