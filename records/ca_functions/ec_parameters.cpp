// Builds the records of the encoding of elliptic-curve domain parameters.

#include <string>

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

namespace {

// Adds a component of a curve: its address, its length and, unless the address is null, its bytes.
void AddComponent(CommandDescriptor& record, const std::string& name, const void* bytes, CK_ULONG length) {
    record.AddDescriptor(PointerChild(bytes, (name + " ptr=").c_str()));
    record.AddDescriptor(NumberChild(length, (name + " len=").c_str()));
    AddBytes(record, bytes, length, (name + "=").c_str());
}

void AddEncodedParams(CommandDescriptor& record, const void* params, const CK_ULONG* length) {
    record.AddDescriptor(PointerChild(params, "EC Params ptr="));
    record.AddDescriptor(PointerChild(length, "EC Params len ptr="));
    AddNumberAt(record, length, "EC Params len=");
}

void CaptureEncodedParams(CommandType type, CK_RV rv, const void* params, const CK_ULONG* length) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        AddEncodedParams(record, params, length);
        AddBytes(record, params, ValueAt(length), "EC Params=");
    }
    record.Capture();
}

}  // namespace

void EncodeECPrimeParamsCmdStart(CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_BYTE_PTR pPrime,
                                 CK_ULONG ulPrimeLen, CK_BYTE_PTR pA, CK_ULONG ulALen, CK_BYTE_PTR pB,
                                 CK_ULONG ulBLen, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen, CK_BYTE_PTR pX,
                                 CK_ULONG ulXLen, CK_BYTE_PTR pY, CK_ULONG ulYLen, CK_BYTE_PTR pOrder,
                                 CK_ULONG ulOrderLen, CK_BYTE_PTR pCofactor, CK_ULONG ulCofactorLen) {
    StartRecord record(kCmdEncodeECPrimeParams);
    AddEncodedParams(record, pECParams, pulECParamsLen);
    AddComponent(record, "prime", pPrime, ulPrimeLen);
    AddComponent(record, "a", pA, ulALen);
    AddComponent(record, "b", pB, ulBLen);
    AddComponent(record, "seed", pSeed, ulSeedLen);
    AddComponent(record, "x", pX, ulXLen);
    AddComponent(record, "y", pY, ulYLen);
    AddComponent(record, "order", pOrder, ulOrderLen);
    AddComponent(record, "cofactor", pCofactor, ulCofactorLen);
    record.Capture();
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
    StartRecord record(kCmdEncodeECChar2Params);
    AddEncodedParams(record, pECParams, pulECParamsLen);
    // COMPAT: These labels say "len" although the children show the numbers m, k1, k2 and k3.
    record.AddDescriptor(NumberChild(ulM, "m len="));
    record.AddDescriptor(NumberChild(ulK1, "k1 len="));
    record.AddDescriptor(NumberChild(ulK2, "k2 len="));
    record.AddDescriptor(NumberChild(ulK3, "k3 len="));
    AddComponent(record, "a", pA, ulALen);
    AddComponent(record, "b", pB, ulBLen);
    AddComponent(record, "seed", pSeed, ulSeedLen);
    AddComponent(record, "x", pX, ulXLen);
    AddComponent(record, "y", pY, ulYLen);
    AddComponent(record, "order", pOrder, ulOrderLen);
    AddComponent(record, "cofactor", pCofactor, ulCofactorLen);
    record.Capture();
}

void EncodeECChar2ParamsCmdEnd(CK_RV rv, CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_ULONG,
                               CK_ULONG, CK_ULONG, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                               CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    CaptureEncodedParams(kCmdEncodeECChar2Params, rv, pECParams, pulECParamsLen);
}

void EncodeECParamsFromFileCmdStart(CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen,
                                    CK_CHAR_PTR pFileName) {
    StartRecord record(kCmdEncodeECParamsFromFile);
    AddEncodedParams(record, pECParams, pulECParamsLen);
    AddNameText(record, pFileName, LengthOfText(pFileName), "params file=");
    record.Capture();
}

void EncodeECParamsFromFileCmdEnd(CK_RV rv, CK_BYTE_PTR pECParams, CK_ULONG_PTR pulECParamsLen, CK_CHAR_PTR) {
    CaptureEncodedParams(kCmdEncodeECParamsFromFile, rv, pECParams, pulECParamsLen);
}
