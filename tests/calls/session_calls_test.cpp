#include "tests/calls/recorded_call.h"

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
}
