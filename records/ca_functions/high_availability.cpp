// Builds the records of high-availability groups.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

namespace {

// Writes the start record of a call that takes bytes and returns the answer to them.
void CaptureAnsweredBytes(CommandType type, CK_SESSION_HANDLE session, const void* bytes, CK_ULONG length,
                          const void* answer, const CK_ULONG* answerLength) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(PointerChild(bytes));
    record.AddDescriptor(NumberChild(length));
    AddBytes(record, bytes, length);
    record.AddDescriptor(PointerChild(answer));
    record.AddDescriptor(PointerChild(answerLength));
    record.Capture();
}

}  // namespace

void HAInitCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey) {
    CaptureSessionAndObject(kCmdHAInit, hSession, hLoginKey);
}

void HAInitCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { CaptureResult(kCmdHAInit, rv); }

void HAGetMasterPublicCmdStart(CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate, CK_ULONG_PTR pulCertificateLen) {
    StartRecord record(kCmdHAGetMasterPublic);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pCertificate));
    record.AddDescriptor(PointerChild(pulCertificateLen));
    AddNumberAt(record, pulCertificateLen);
    record.Capture();
}

void HAGetMasterPublicCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate,
                             CK_ULONG_PTR pulCertificateLen) {
    EndRecord record(kCmdHAGetMasterPublic, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pCertificate));
        record.AddDescriptor(PointerChild(pulCertificateLen));
        AddNumberAt(record, pulCertificateLen);
        AddBytes(record, pCertificate, ValueAt(pulCertificateLen));
    }
    record.Capture();
}

void HAGetLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR pCertificate,
                                 CK_ULONG ulCertificateLen, CK_BYTE_PTR pChallenge,
                                 CK_ULONG_PTR pulChallengeLen) {
    StartRecord record(kCmdHAGetLoginChallenge);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(PointerChild(pCertificate));
    record.AddDescriptor(NumberChild(ulCertificateLen));
    AddBytes(record, pCertificate, ulCertificateLen);
    record.AddDescriptor(PointerChild(pChallenge));
    record.AddDescriptor(PointerChild(pulChallengeLen));
    AddNumberAt(record, pulChallengeLen);
    record.Capture();
}

void HAGetLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR,
                               CK_ULONG, CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    EndRecord record(kCmdHAGetLoginChallenge, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(UserTypeChild(userType));
        record.AddDescriptor(PointerChild(pChallenge));
        AddNumberAt(record, pulChallengeLen);
        AddBytes(record, pChallenge, ValueAt(pulChallengeLen));
    }
    record.Capture();
}

void HAAnswerLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey,
                                    CK_BYTE_PTR pChallenge, CK_ULONG ulChallengeLen, CK_BYTE_PTR pAnswer,
                                    CK_ULONG_PTR pulAnswerLen) {
    StartRecord record(kCmdHAAnswerLoginChallenge);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hLoginKey));
    record.AddDescriptor(PointerChild(pChallenge));
    record.AddDescriptor(NumberChild(ulChallengeLen));
    AddBytes(record, pChallenge, ulChallengeLen);
    record.AddDescriptor(PointerChild(pAnswer));
    record.AddDescriptor(PointerChild(pulAnswerLen));
    record.Capture();
}

void HAAnswerLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE, CK_BYTE_PTR,
                                  CK_ULONG, CK_BYTE_PTR pAnswer, CK_ULONG_PTR pulAnswerLen) {
    CaptureBufferOfSession(kCmdHAAnswerLoginChallenge, rv, hSession, pAnswer, pulAnswerLen);
}

void HALoginCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pAnswer, CK_ULONG ulAnswerLen,
                     CK_BYTE_PTR pMofNChallenge, CK_ULONG_PTR pulMofNChallengeLen) {
    CaptureAnsweredBytes(kCmdHALogin, hSession, pAnswer, ulAnswerLen, pMofNChallenge, pulMofNChallengeLen);
}

void HALoginCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pMofNChallenge,
                   CK_ULONG_PTR pulMofNChallengeLen) {
    CaptureBufferOfSession(kCmdHALogin, rv, hSession, pMofNChallenge, pulMofNChallengeLen);
}

void HAAnswerMofNChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMofNChallenge,
                                   CK_ULONG ulMofNChallengeLen, CK_BYTE_PTR pMofNAnswer,
                                   CK_ULONG_PTR pulMofNAnswerLen) {
    CaptureAnsweredBytes(kCmdHAAnswerMofNChallenge, hSession, pMofNChallenge, ulMofNChallengeLen, pMofNAnswer,
                         pulMofNAnswerLen);
}

void HAAnswerMofNChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG,
                                 CK_BYTE_PTR pMofNAnswer, CK_ULONG_PTR pulMofNAnswerLen) {
    CaptureMeasuredBufferOfSession(kCmdHAAnswerMofNChallenge, rv, hSession, pMofNAnswer, pulMofNAnswerLen);
}

void HAActivateMofNCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMofNAnswer, CK_ULONG ulMofNAnswerLen) {
    StartRecord record(kCmdHAActivateMofN);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pMofNAnswer));
    record.AddDescriptor(NumberChild(ulMofNAnswerLen));
    AddBytes(record, pMofNAnswer, ulMofNAnswerLen);
    record.Capture();
}

void HAActivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdHAActivateMofN, rv);
}

void GetHAStateCmdStart(CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    CaptureSlotAndPointers(kCmdGetHAState, slotID, {pState});
}

void GetHAStateCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    EndRecord record(kCmdGetHAState, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pState));
        if (pState != nullptr) record.AddDescriptor(HAStatusChild(pState));
    }
    record.Capture();
}
