// Records of the token's own audit log and clock.

#include <algorithm>

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void InitAuditCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_CHAR_PTR pLabel) {
    CommandDescriptor command(kCmdInitAudit, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pPin));
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Pointer(pLabel));
    // Terminated, or padded like the label of any token: what follows it is nobody's to see.
    AddText(command, pLabel, std::min(ckscribe::ReadableTextLength(pLabel), kLabelLength));
    command.Capture();
}

void InitAuditCmdEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_CHAR_PTR) {
    CaptureResult(kCmdInitAudit, rv);
}

void LogVerifyCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMessages, CK_ULONG ulMessageCount,
                       CK_ULONG ulChained, CK_ULONG_PTR pulVerified) {
    CommandDescriptor command(kCmdLogVerify, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pMessages));
    command.AddDescriptor(Number(ulMessageCount));
    command.AddDescriptor(Number(ulChained));
    command.AddDescriptor(Pointer(pulVerified));
    command.Capture();
}

void LogVerifyCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMessages, CK_ULONG ulMessageCount,
                     CK_ULONG ulChained, CK_ULONG_PTR pulVerified) {
    CommandDescriptor command(kCmdLogVerify, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pMessages));
        command.AddDescriptor(Number(ulMessageCount));
        command.AddDescriptor(Number(ulChained));
        command.AddDescriptor(Pointer(pulVerified));
        AddNumberAt(command, pulVerified);
    }
    command.Capture();
}

void LogVerifyFileCmdStart(CK_SESSION_HANDLE hSession, CK_CHAR_PTR pFileName, CK_ULONG_PTR pulVerified) {
    CommandDescriptor command(kCmdLogVerifyFile, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pFileName));
    AddText(command, pFileName, ckscribe::ReadableTextLength(pFileName));
    command.AddDescriptor(Pointer(pulVerified));
    command.Capture();
}

void LogVerifyFileCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_CHAR_PTR pFileName,
                         CK_ULONG_PTR pulVerified) {
    CommandDescriptor command(kCmdLogVerifyFile, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pFileName));
        AddText(command, pFileName, ckscribe::ReadableTextLength(pFileName));
        command.AddDescriptor(Pointer(pulVerified));
        AddNumberAt(command, pulVerified);
    }
    command.Capture();
}

void LogExternalCmdStart(CK_SLOT_ID slotID, CK_SESSION_HANDLE hSession, CK_CHAR_PTR pMessage,
                         CK_ULONG ulMessageLen) {
    CommandDescriptor command(kCmdLogExternal, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pMessage));
    command.AddDescriptor(Number(ulMessageLen));
    AddText(command, pMessage, ulMessageLen);
    command.Capture();
}

void LogExternalCmdEnd(CK_RV rv, CK_SLOT_ID, CK_SESSION_HANDLE, CK_CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdLogExternal, rv);
}

void LogImportSecretCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret, CK_ULONG ulLogSecretLen) {
    CommandDescriptor command(kCmdLogImportSecret, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pLogSecret));
    AddBytes(command, pLogSecret, ulLogSecretLen);
    command.Capture();
}

void LogImportSecretCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdLogImportSecret, rv);
}

void LogExportSecretCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret, CK_ULONG_PTR) {
    CaptureSessionAndPointers(kCmdLogExportSecret, hSession, {pLogSecret});
}

void LogExportSecretCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLogSecret,
                           CK_ULONG_PTR pulLogSecretLen) {
    CommandDescriptor command(kCmdLogExportSecret, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pLogSecret));
        AddBytes(command, pLogSecret, ValueAt(pulLogSecretLen));
    }
    command.Capture();
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
    CommandDescriptor command(kCmdLogSetConfig, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulMask));
    command.AddDescriptor(Number(ulRotation));
    command.AddDescriptor(Number(ulInterval));
    command.AddDescriptor(Number(ulMaxSize));
    command.AddDescriptor(Pointer(pPath));
    AddText(command, pPath, ckscribe::ReadableTextLength(pPath));
    command.Capture();
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
    CommandDescriptor command(kCmdLogGetConfig, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulMask));
        command.AddDescriptor(Pointer(pulRotation));
        command.AddDescriptor(Pointer(pulInterval));
        command.AddDescriptor(Pointer(pulMaxSize));
        command.AddDescriptor(Pointer(pPath));
        AddNumberAt(command, pulMask);
        AddNumberAt(command, pulRotation);
        AddNumberAt(command, pulInterval);
        AddNumberAt(command, pulMaxSize);
        AddText(command, pPath, ckscribe::ReadableTextLength(pPath));
    }
    command.Capture();
}

void LogGetStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus1, CK_ULONG_PTR pulStatus2,
                          CK_ULONG_PTR pulStatus3, CK_ULONG_PTR pulStatus4, CK_ULONG_PTR pulStatus5) {
    CaptureSlotAndPointers(kCmdLogGetStatus, slotID,
                           {pulStatus1, pulStatus2, pulStatus3, pulStatus4, pulStatus5});
}

void LogGetStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus1, CK_ULONG_PTR pulStatus2,
                        CK_ULONG_PTR pulStatus3, CK_ULONG_PTR pulStatus4, CK_ULONG_PTR pulStatus5) {
    CommandDescriptor command(kCmdLogGetStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulStatus1));
        command.AddDescriptor(Pointer(pulStatus2));
        command.AddDescriptor(Pointer(pulStatus3));
        command.AddDescriptor(Pointer(pulStatus4));
        command.AddDescriptor(Pointer(pulStatus5));
        AddNumberAt(command, pulStatus1);
        AddNumberAt(command, pulStatus2);
        AddNumberAt(command, pulStatus3);
        AddNumberAt(command, pulStatus4);
        AddNumberAt(command, pulStatus5);
    }
    command.Capture();
}
