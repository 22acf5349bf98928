// Records of PKCS#11 section "General-purpose functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void InitializeStart(CK_VOID_PTR) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kInitialize, kStart, 0);
    command.Capture();
}

void InitializeEnd(CK_RV rv, CK_VOID_PTR) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kInitialize, kEnd, rv);
    command.Capture();
}

void FinalizeStart(CK_VOID_PTR) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kFinalize, kStart, 0);
    command.Capture();
}

void FinalizeEnd(CK_RV rv, CK_VOID_PTR) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kFinalize, kEnd, rv);
    command.Capture();
}

void GetInfoStart(CK_INFO_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetInfo, kStart, 0);
    command.Capture();
}

void GetInfoEnd(CK_RV rv, CK_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetInfo, kEnd, rv);
    command.AddDescriptor(Info(pInfo));
    command.Capture();
}

void GetFunctionListStart(CK_FUNCTION_LIST_PTR_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetFunctionList, kStart, 0);
    command.Capture();
}

void GetFunctionListEnd(CK_RV rv, CK_FUNCTION_LIST_PTR_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetFunctionList, kEnd, rv);
    command.Capture();
}

void TerminateStart() {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kTerminate, kStart, 0);
    command.Capture();
}

void TerminateEnd(CK_RV rv) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kTerminate, kEnd, rv);
    command.Capture();
}

void PerformSelfTestStart(CK_SESSION_HANDLE hSession, CK_ULONG testType) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kPerformSelfTest, kStart, 0);
    command.AddDescriptor(Number(testType));
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void PerformSelfTestEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kPerformSelfTest, kEnd, rv);
    command.Capture();
}
