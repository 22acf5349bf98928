// Records of PKCS#11 sections "Random number generation functions" and "Parallel function management
// functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void SeedRandomStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSeedRandom, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pSeed, ulSeedLen));
    command.Capture();
}

void SeedRandomEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSeedRandom, kEnd, rv);
    command.Capture();
}

void GenerateRandomStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGenerateRandom, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GenerateRandomEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR RandomData, CK_ULONG ulRandomLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGenerateRandom, kEnd, rv);
    command.AddDescriptor(Bytes(RandomData, ulRandomLen));
    command.Capture();
}

void GetFunctionStatusStart(CK_SESSION_HANDLE hSession) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetFunctionStatus, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GetFunctionStatusEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetFunctionStatus, kEnd, rv);
    command.Capture();
}

void CancelFunctionStart(CK_SESSION_HANDLE hSession) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCancelFunction, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void CancelFunctionEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCancelFunction, kEnd, rv);
    command.Capture();
}
