// Builds the records of PKCS#11 section "General-purpose functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void InitializeStart(CK_VOID_PTR) {
    if (!LevelSelects(kInitialize)) return;
    StartRecord record(kInitialize);
    record.Capture();
}

void InitializeEnd(CK_RV rv, CK_VOID_PTR) {
    if (!LevelSelects(kInitialize)) return;
    EndRecord record(kInitialize, rv);
    record.Capture();
}

void FinalizeStart(CK_VOID_PTR) {
    if (!LevelSelects(kFinalize)) return;
    StartRecord record(kFinalize);
    record.Capture();
}

void FinalizeEnd(CK_RV rv, CK_VOID_PTR) {
    if (!LevelSelects(kFinalize)) return;
    EndRecord record(kFinalize, rv);
    record.Capture();
}

void GetInfoStart(CK_INFO_PTR) {
    if (!LevelSelects(kGetInfo)) return;
    StartRecord record(kGetInfo);
    record.Capture();
}

void GetInfoEnd(CK_RV rv, CK_INFO_PTR pInfo) {
    if (!LevelSelects(kGetInfo)) return;
    EndRecord record(kGetInfo, rv);
    record.AddDescriptor(InfoChild(pInfo));
    record.Capture();
}

void GetFunctionListStart(CK_FUNCTION_LIST_PTR_PTR) {
    if (!LevelSelects(kGetFunctionList)) return;
    StartRecord record(kGetFunctionList);
    record.Capture();
}

void GetFunctionListEnd(CK_RV rv, CK_FUNCTION_LIST_PTR_PTR) {
    if (!LevelSelects(kGetFunctionList)) return;
    EndRecord record(kGetFunctionList, rv);
    record.Capture();
}

void TerminateStart() {
    if (!LevelSelects(kTerminate)) return;
    StartRecord record(kTerminate);
    record.Capture();
}

void TerminateEnd(CK_RV rv) {
    if (!LevelSelects(kTerminate)) return;
    EndRecord record(kTerminate, rv);
    record.Capture();
}

void PerformSelfTestStart(CK_SESSION_HANDLE hSession, CK_ULONG testType) {
    if (!LevelSelects(kPerformSelfTest)) return;
    StartRecord record(kPerformSelfTest);
    record.AddDescriptor(NumberChild(testType));
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void PerformSelfTestEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    if (!LevelSelects(kPerformSelfTest)) return;
    EndRecord record(kPerformSelfTest, rv);
    record.Capture();
}
