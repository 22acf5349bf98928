// Records of the encoding of elliptic-curve domain parameters.

#include <string>

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

namespace {

// A component of a curve: its address, its length and, behind an address, its bytes.
void AddComponent(CommandDescriptor& command, const std::string& name, const void* bytes, CK_ULONG length) {
    command.AddDescriptor(Pointer(bytes, (name + " ptr=").c_str()));
    command.AddDescriptor(Number(length, (name + " len=").c_str()));
    AddBytes(command, bytes, length, (name + "=").c_str());
}

void AddEncodedParams(CommandDescriptor& command, const void* params, const CK_ULONG* length) {
    command.AddDescriptor(Pointer(params, "EC Params ptr="));
    command.AddDescriptor(Pointer(length, "EC Params len ptr="));
    AddNumberAt(command, length, "EC Params len=");
}

void CaptureEncodedParams(CommandType type, CK_RV rv, const void* params, const CK_ULONG* length) {
    CommandDescriptor command(type, kEnd, rv);
    if (ShowsOutputs(rv)) {
        AddEncodedParams(command, params, length);
        AddBytes(command, params, ValueAt(length), "EC Params=");
    }
    command.Capture();
}

}  // namespace

void EncodeECPrimeParamsCmdStart(CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_BYTE_PTR pPrime,
                                 CK_ULONG ulPrimeLen, CK_BYTE_PTR pA, CK_ULONG ulALen, CK_BYTE_PTR pB,
                                 CK_ULONG ulBLen, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen, CK_BYTE_PTR pX,
                                 CK_ULONG ulXLen, CK_BYTE_PTR pY, CK_ULONG ulYLen, CK_BYTE_PTR pOrder,
                                 CK_ULONG ulOrderLen, CK_BYTE_PTR pCofactor, CK_ULONG ulCofactorLen) {
    CommandDescriptor command(kCmdEncodeECPrimeParams, kStart, 0);
    AddEncodedParams(command, pECParams, pulECParamsLen);
    AddComponent(command, "prime", pPrime, ulPrimeLen);
    AddComponent(command, "a", pA, ulALen);
    AddComponent(command, "b", pB, ulBLen);
    AddComponent(command, "seed", pSeed, ulSeedLen);
    AddComponent(command, "x", pX, ulXLen);
    AddComponent(command, "y", pY, ulYLen);
    AddComponent(command, "order", pOrder, ulOrderLen);
    AddComponent(command, "cofactor", pCofactor, ulCofactorLen);
    command.Capture();
}

void EncodeECPrimeParamsCmdEnd(CK_RV rv, CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_BYTE_PTR,
                               CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG) {
    CaptureEncodedParams(kCmdEncodeECPrimeParams, rv, pECParams, pulECParamsLen);
}

void EncodeECChar2ParamsCmdStart(CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_ULONG ulM,
                                 CK_ULONG ulK1, CK_ULONG ulK2, CK_ULONG ulK3, CK_BYTE_PTR pA, CK_ULONG ulALen,
                                 CK_BYTE_PTR pB, CK_ULONG ulBLen, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen,
                                 CK_BYTE_PTR pX, CK_ULONG ulXLen, CK_BYTE_PTR pY, CK_ULONG ulYLen,
                                 CK_BYTE_PTR pOrder, CK_ULONG ulOrderLen, CK_BYTE_PTR pCofactor,
                                 CK_ULONG ulCofactorLen) {
    CommandDescriptor command(kCmdEncodeECChar2Params, kStart, 0);
    AddEncodedParams(command, pECParams, pulECParamsLen);
    // The numbers themselves; their labels say "len" all the same, and are kept.
    command.AddDescriptor(Number(ulM, "m len="));
    command.AddDescriptor(Number(ulK1, "k1 len="));
    command.AddDescriptor(Number(ulK2, "k2 len="));
    command.AddDescriptor(Number(ulK3, "k3 len="));
    AddComponent(command, "a", pA, ulALen);
    AddComponent(command, "b", pB, ulBLen);
    AddComponent(command, "seed", pSeed, ulSeedLen);
    AddComponent(command, "x", pX, ulXLen);
    AddComponent(command, "y", pY, ulYLen);
    AddComponent(command, "order", pOrder, ulOrderLen);
    AddComponent(command, "cofactor", pCofactor, ulCofactorLen);
    command.Capture();
}

void EncodeECChar2ParamsCmdEnd(CK_RV rv, CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_ULONG,
                               CK_ULONG, CK_ULONG, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    CaptureEncodedParams(kCmdEncodeECChar2Params, rv, pECParams, pulECParamsLen);
}

void EncodeECParamsFromFileCmdStart(CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen,
                                    CK_CHAR_PTR pFileName) {
    CommandDescriptor command(kCmdEncodeECParamsFromFile, kStart, 0);
    AddEncodedParams(command, pECParams, pulECParamsLen);
    AddText(command, pFileName, ckscribe::ReadableTextLength(pFileName), "params file=");
    command.Capture();
}

void EncodeECParamsFromFileCmdEnd(CK_RV rv, CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_CHAR_PTR) {
    CaptureEncodedParams(kCmdEncodeECParamsFromFile, rv, pECParams, pulECParamsLen);
}
