// Builds the records of PKCS#11 sections "Random number generation functions" and "Parallel function
// management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void SeedRandomStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen) {
    if (!LevelSelects(kSeedRandom)) return;
    StartRecord record(kSeedRandom);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pSeed, ulSeedLen));
    record.Capture();
}

void SeedRandomEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kSeedRandom)) return;
    EndRecord record(kSeedRandom, rv);
    record.Capture();
}

void GenerateRandomStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kGenerateRandom)) return;
    StartRecord record(kGenerateRandom);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void GenerateRandomEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR RandomData, CK_ULONG ulRandomLen) {
    if (!LevelSelects(kGenerateRandom)) return;
    EndRecord record(kGenerateRandom, rv);
    record.AddDescriptor(BytesChild(RandomData, ulRandomLen));
    record.Capture();
}

void GetFunctionStatusStart(CK_SESSION_HANDLE hSession) {
    if (!LevelSelects(kGetFunctionStatus)) return;
    StartRecord record(kGetFunctionStatus);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void GetFunctionStatusEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!LevelSelects(kGetFunctionStatus)) return;
    EndRecord record(kGetFunctionStatus, rv);
    record.Capture();
}

void CancelFunctionStart(CK_SESSION_HANDLE hSession) {
    if (!LevelSelects(kCancelFunction)) return;
    StartRecord record(kCancelFunction);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void CancelFunctionEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!LevelSelects(kCancelFunction)) return;
    EndRecord record(kCancelFunction, rv);
    record.Capture();
}
