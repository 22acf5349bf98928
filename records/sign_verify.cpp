// Builds the records of PKCS#11 sections "Signing and MACing functions" and "Functions for verifying
// signatures and MACs".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void SignInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kSign)) return;
    StartRecord record(kSign, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void SignInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kSign)) return;
    EndRecord record(kSign, CommandSpecifier::kInit, rv);
    record.Capture();
}

void SignStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kSign)) return;
    StartRecord record(kSign);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pData, ulDataLen));
    record.Capture();
}

void SignEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pSignature,
             CK_ULONG_PTR pulSignatureLen) {
    if (!LevelSelects(kSign)) return;
    EndRecord record(kSign, rv);
    record.AddDescriptor(BytesChild(pSignature, ValueAt(pulSignatureLen)));
    record.Capture();
}

void SignUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!LevelSelects(kSign)) return;
    StartRecord record(kSign, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.Capture();
}

void SignUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kSign)) return;
    EndRecord record(kSign, CommandSpecifier::kUpdate, rv);
    record.Capture();
}

void SignFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kSign)) return;
    StartRecord record(kSign, CommandSpecifier::kFinal);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void SignFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen) {
    if (!LevelSelects(kSign)) return;
    EndRecord record(kSign, CommandSpecifier::kFinal, rv);
    record.AddDescriptor(BytesChild(pSignature, ValueAt(pulSignatureLen)));
    record.Capture();
}

void SignRecoverInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kSignRecover)) return;
    StartRecord record(kSignRecover, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void SignRecoverInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kSignRecover)) return;
    EndRecord record(kSignRecover, CommandSpecifier::kInit, rv);
    record.Capture();
}

void SignRecoverStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                      CK_ULONG_PTR) {
    if (!LevelSelects(kSignRecover)) return;
    StartRecord record(kSignRecover);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pData, ulDataLen));
    record.Capture();
}

void SignRecoverEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pSignature,
                    CK_ULONG_PTR pulSignatureLen) {
    if (!LevelSelects(kSignRecover)) return;
    EndRecord record(kSignRecover, rv);
    record.AddDescriptor(BytesChild(pSignature, ValueAt(pulSignatureLen)));
    record.Capture();
}

void VerifyInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kVerify)) return;
    StartRecord record(kVerify, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void VerifyInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kVerify)) return;
    EndRecord record(kVerify, CommandSpecifier::kInit, rv);
    record.Capture();
}

void VerifyStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
                 CK_ULONG ulSignatureLen) {
    if (!LevelSelects(kVerify)) return;
    StartRecord record(kVerify);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pData, ulDataLen));
    record.AddDescriptor(BytesChild(pSignature, ulSignatureLen));
    record.Capture();
}

void VerifyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kVerify)) return;
    EndRecord record(kVerify, rv);
    record.Capture();
}

void VerifyUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!LevelSelects(kVerify)) return;
    StartRecord record(kVerify, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.Capture();
}

void VerifyUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kVerify)) return;
    EndRecord record(kVerify, CommandSpecifier::kUpdate, rv);
    record.Capture();
}

void VerifyFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen) {
    if (!LevelSelects(kVerify)) return;
    StartRecord record(kVerify, CommandSpecifier::kFinal);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pSignature, ulSignatureLen));
    record.Capture();
}

void VerifyFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kVerify)) return;
    EndRecord record(kVerify, CommandSpecifier::kFinal, rv);
    record.Capture();
}

void VerifyRecoverInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kVerifyRecover)) return;
    StartRecord record(kVerifyRecover, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void VerifyRecoverInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kVerifyRecover)) return;
    EndRecord record(kVerifyRecover, CommandSpecifier::kInit, rv);
    record.Capture();
}

void VerifyRecoverStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen,
                        CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kVerifyRecover)) return;
    StartRecord record(kVerifyRecover);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pSignature, ulSignatureLen));
    record.Capture();
}

void VerifyRecoverEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pData,
                      CK_ULONG_PTR pulDataLen) {
    if (!LevelSelects(kVerifyRecover)) return;
    EndRecord record(kVerifyRecover, rv);
    record.AddDescriptor(BytesChild(pData, ValueAt(pulDataLen)));
    record.Capture();
}
