// Records of PKCS#11 sections "Signing and MACing functions" and "Functions for verifying signatures and
// MACs".

#include "records/record_children.h"
#include "records/standard_records.h"

void SignInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void SignInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kInit, kEnd, rv);
    command.Capture();
}

void SignStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pData, ulDataLen));
    command.Capture();
}

void SignEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pSignature,
             CK_ULONG_PTR pulSignatureLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kEnd, rv);
    command.AddDescriptor(Bytes(pSignature, ValueAt(pulSignatureLen)));
    command.Capture();
}

void SignUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.Capture();
}

void SignUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kUpdate, kEnd, rv);
    command.Capture();
}

void SignFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kFinal, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void SignFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSign, kFinal, kEnd, rv);
    command.AddDescriptor(Bytes(pSignature, ValueAt(pulSignatureLen)));
    command.Capture();
}

void SignRecoverInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignRecover, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void SignRecoverInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignRecover, kInit, kEnd, rv);
    command.Capture();
}

void SignRecoverStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                      CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignRecover, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pData, ulDataLen));
    command.Capture();
}

void SignRecoverEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pSignature,
                    CK_ULONG_PTR pulSignatureLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignRecover, kEnd, rv);
    command.AddDescriptor(Bytes(pSignature, ValueAt(pulSignatureLen)));
    command.Capture();
}

void VerifyInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void VerifyInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kInit, kEnd, rv);
    command.Capture();
}

void VerifyStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
                 CK_ULONG ulSignatureLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pData, ulDataLen));
    command.AddDescriptor(Bytes(pSignature, ulSignatureLen));
    command.Capture();
}

void VerifyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kEnd, rv);
    command.Capture();
}

void VerifyUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.Capture();
}

void VerifyUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kUpdate, kEnd, rv);
    command.Capture();
}

void VerifyFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kFinal, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pSignature, ulSignatureLen));
    command.Capture();
}

void VerifyFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerify, kFinal, kEnd, rv);
    command.Capture();
}

void VerifyRecoverInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerifyRecover, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void VerifyRecoverInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerifyRecover, kInit, kEnd, rv);
    command.Capture();
}

void VerifyRecoverStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen,
                        CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerifyRecover, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pSignature, ulSignatureLen));
    command.Capture();
}

void VerifyRecoverEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pData,
                      CK_ULONG_PTR pulDataLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kVerifyRecover, kEnd, rv);
    command.AddDescriptor(Bytes(pData, ValueAt(pulDataLen)));
    command.Capture();
}
