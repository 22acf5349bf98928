// Builds the records of the token's own audit log and clock.

#include <algorithm>

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void InitAuditCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_CHAR_PTR pLabel) {
    StartRecord record(kCmdInitAudit);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pPin));
    record.AddDescriptor(PinLengthChild(ulPinLen));
    record.AddDescriptor(PinChild(pPin));
    record.AddDescriptor(PointerChild(pLabel));
    // The label ends at its terminator, or after 32 characters like the label of any token.
    AddNameText(record, pLabel, std::min(LengthOfText(pLabel), kLabelLength));
    record.Capture();
}

void InitAuditCmdEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_CHAR_PTR) {
    CaptureResult(kCmdInitAudit, rv);
}

void LogVerifyCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMessages, CK_ULONG ulMessageCount,
                       CK_ULONG ulChained, CK_ULONG_PTR pulVerified) {
    StartRecord record(kCmdLogVerify);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pMessages));
    record.AddDescriptor(NumberChild(ulMessageCount));
    record.AddDescriptor(NumberChild(ulChained));
    record.AddDescriptor(PointerChild(pulVerified));
    record.Capture();
}

void LogVerifyCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMessages, CK_ULONG ulMessageCount,
                     CK_ULONG ulChained, CK_ULONG_PTR pulVerified) {
    EndRecord record(kCmdLogVerify, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pMessages));
        record.AddDescriptor(NumberChild(ulMessageCount));
        record.AddDescriptor(NumberChild(ulChained));
        record.AddDescriptor(PointerChild(pulVerified));
        AddNumberAt(record, pulVerified);
    }
    record.Capture();
}

void LogVerifyFileCmdStart(CK_SESSION_HANDLE hSession, CK_CHAR_PTR pFileName, CK_ULONG_PTR pulVerified) {
    StartRecord record(kCmdLogVerifyFile);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pFileName));
    AddNameText(record, pFileName, LengthOfText(pFileName));
    record.AddDescriptor(PointerChild(pulVerified));
    record.Capture();
}

void LogVerifyFileCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_CHAR_PTR pFileName,
                         CK_ULONG_PTR pulVerified) {
    EndRecord record(kCmdLogVerifyFile, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pFileName));
        AddNameText(record, pFileName, LengthOfText(pFileName));
        record.AddDescriptor(PointerChild(pulVerified));
        AddNumberAt(record, pulVerified);
    }
    record.Capture();
}

void LogExternalCmdStart(CK_SLOT_ID slotID, CK_SESSION_HANDLE hSession, CK_CHAR_PTR pMessage,
                         CK_ULONG ulMessageLen) {
    StartRecord record(kCmdLogExternal);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pMessage));
    record.AddDescriptor(NumberChild(ulMessageLen));
    AddText(record, pMessage, ulMessageLen);
    record.Capture();
}

void LogExternalCmdEnd(CK_RV rv, CK_SLOT_ID, CK_SESSION_HANDLE, CK_CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdLogExternal, rv);
}

void LogImportSecretCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret, CK_ULONG ulLogSecretLen) {
    StartRecord record(kCmdLogImportSecret);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pLogSecret));
    AddBytesOfUnshownLength(record, pLogSecret, ulLogSecretLen);
    record.Capture();
}

void LogImportSecretCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdLogImportSecret, rv);
}

void LogExportSecretCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret, CK_ULONG_PTR) {
    CaptureSessionAndPointers(kCmdLogExportSecret, hSession, {pLogSecret});
}

void LogExportSecretCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret,
                           CK_ULONG_PTR pulLogSecretLen) {
    EndRecord record(kCmdLogExportSecret, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pLogSecret));
        AddBytesOfUnshownLength(record, pLogSecret, ValueAt(pulLogSecretLen));
    }
    record.Capture();
}

void TimeSyncCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTime) {
    CaptureSessionAndNumber(kCmdTimeSync, hSession, ulTime);
}

void TimeSyncCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) { CaptureResult(kCmdTimeSync, rv); }

void GetTimeCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulTime) {
    CaptureSessionAndPointers(kCmdGetTime, hSession, {pulTime});
}

void GetTimeCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulTime) {
    CaptureNumberOfSession(kCmdGetTime, rv, hSession, pulTime);
}

void LogSetConfigCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulMask, CK_ULONG ulRotation,
                          CK_ULONG ulInterval, CK_ULONG ulMaxSize, CK_CHAR_PTR pPath) {
    StartRecord record(kCmdLogSetConfig);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulMask));
    record.AddDescriptor(NumberChild(ulRotation));
    record.AddDescriptor(NumberChild(ulInterval));
    record.AddDescriptor(NumberChild(ulMaxSize));
    record.AddDescriptor(PointerChild(pPath));
    AddNameText(record, pPath, LengthOfText(pPath));
    record.Capture();
}

void LogSetConfigCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_CHAR_PTR) {
    CaptureResult(kCmdLogSetConfig, rv);
}

void LogGetConfigCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulMask, CK_ULONG_PTR pulRotation,
                          CK_ULONG_PTR pulInterval, CK_ULONG_PTR pulMaxSize, CK_CHAR_PTR pPath) {
    CaptureSessionAndPointers(kCmdLogGetConfig, hSession,
                              {pulMask, pulRotation, pulInterval, pulMaxSize, pPath});
}

void LogGetConfigCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulMask, CK_ULONG_PTR pulRotation,
                        CK_ULONG_PTR pulInterval, CK_ULONG_PTR pulMaxSize, CK_CHAR_PTR pPath) {
    EndRecord record(kCmdLogGetConfig, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pulMask));
        record.AddDescriptor(PointerChild(pulRotation));
        record.AddDescriptor(PointerChild(pulInterval));
        record.AddDescriptor(PointerChild(pulMaxSize));
        record.AddDescriptor(PointerChild(pPath));
        AddNumberAt(record, pulMask);
        AddNumberAt(record, pulRotation);
        AddNumberAt(record, pulInterval);
        AddNumberAt(record, pulMaxSize);
        AddNameText(record, pPath, LengthOfText(pPath));
    }
    record.Capture();
}

void LogGetStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus1, CK_ULONG_PTR pulStatus2,
                          CK_ULONG_PTR pulStatus3, CK_ULONG_PTR pulStatus4, CK_ULONG_PTR pulStatus5) {
    CaptureSlotAndPointers(kCmdLogGetStatus, slotID,
                           {pulStatus1, pulStatus2, pulStatus3, pulStatus4, pulStatus5});
}

void LogGetStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus1, CK_ULONG_PTR pulStatus2,
                        CK_ULONG_PTR pulStatus3, CK_ULONG_PTR pulStatus4, CK_ULONG_PTR pulStatus5) {
    EndRecord record(kCmdLogGetStatus, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulStatus1));
        record.AddDescriptor(PointerChild(pulStatus2));
        record.AddDescriptor(PointerChild(pulStatus3));
        record.AddDescriptor(PointerChild(pulStatus4));
        record.AddDescriptor(PointerChild(pulStatus5));
        AddNumberAt(record, pulStatus1);
        AddNumberAt(record, pulStatus2);
        AddNumberAt(record, pulStatus3);
        AddNumberAt(record, pulStatus4);
        AddNumberAt(record, pulStatus5);
    }
    record.Capture();
}
