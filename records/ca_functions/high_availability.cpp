// Records of high-availability groups.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

namespace {

// What is to be answered goes in, the answer comes out.
void CaptureAnsweredBytes(CommandType type, CK_SESSION_HANDLE session, const void* bytes, CK_ULONG length,
                          const void* answer, const CK_ULONG* answerLength) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Session(session));
    command.AddDescriptor(Pointer(bytes));
    command.AddDescriptor(Number(length));
    AddBytes(command, bytes, length);
    command.AddDescriptor(Pointer(answer));
    command.AddDescriptor(Pointer(answerLength));
    command.Capture();
}

}  // namespace

void HAInitCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey) {
    CaptureSessionAndObject(kCmdHAInit, hSession, hLoginKey);
}

void HAInitCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { CaptureResult(kCmdHAInit, rv); }

void HAGetMasterPublicCmdStart(CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate, CK_ULONG_PTR pulCertificateLen) {
    CommandDescriptor command(kCmdHAGetMasterPublic, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pCertificate));
    command.AddDescriptor(Pointer(pulCertificateLen));
    AddNumberAt(command, pulCertificateLen);
    command.Capture();
}

void HAGetMasterPublicCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_BYTE_PTR pCertificate,
                             CK_ULONG_PTR pulCertificateLen) {
    CommandDescriptor command(kCmdHAGetMasterPublic, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pCertificate));
        command.AddDescriptor(Pointer(pulCertificateLen));
        AddNumberAt(command, pulCertificateLen);
        AddBytes(command, pCertificate, ValueAt(pulCertificateLen));
    }
    command.Capture();
}

void HAGetLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR pCertificate,
                                 CK_ULONG ulCertificateLen, CK_BYTE_PTR pChallenge,
                                 CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdHAGetLoginChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(Pointer(pCertificate));
    command.AddDescriptor(Number(ulCertificateLen));
    AddBytes(command, pCertificate, ulCertificateLen);
    command.AddDescriptor(Pointer(pChallenge));
    command.AddDescriptor(Pointer(pulChallengeLen));
    AddNumberAt(command, pulChallengeLen);
    command.Capture();
}

void HAGetLoginChallengeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_BYTE_PTR,
                               CK_ULONG, CK_BYTE_PTR pChallenge, CK_ULONG_PTR pulChallengeLen) {
    CommandDescriptor command(kCmdHAGetLoginChallenge, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(UserType(userType));
        command.AddDescriptor(Pointer(pChallenge));
        AddNumberAt(command, pulChallengeLen);
        AddBytes(command, pChallenge, ValueAt(pulChallengeLen));
    }
    command.Capture();
}

void HAAnswerLoginChallengeCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hLoginKey,
                                    CK_BYTE_PTR pChallenge, CK_ULONG ulChallengeLen, CK_BYTE_PTR pAnswer,
                                    CK_ULONG_PTR pulAnswerLen) {
    CommandDescriptor command(kCmdHAAnswerLoginChallenge, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hLoginKey));
    command.AddDescriptor(Pointer(pChallenge));
    command.AddDescriptor(Number(ulChallengeLen));
    AddBytes(command, pChallenge, ulChallengeLen);
    command.AddDescriptor(Pointer(pAnswer));
    command.AddDescriptor(Pointer(pulAnswerLen));
    command.Capture();
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
    CommandDescriptor command(kCmdHAActivateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pMofNAnswer));
    command.AddDescriptor(Number(ulMofNAnswerLen));
    AddBytes(command, pMofNAnswer, ulMofNAnswerLen);
    command.Capture();
}

void HAActivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdHAActivateMofN, rv);
}

void GetHAStateCmdStart(CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    CaptureSlotAndPointers(kCmdGetHAState, slotID, {pState});
}

void GetHAStateCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_HA_STATUS* pState) {
    CommandDescriptor command(kCmdGetHAState, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pState));
        if (pState != nullptr) command.AddDescriptor(HAStatus(pState));
    }
    command.Capture();
}
