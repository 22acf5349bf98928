// No record of a function shows these lengths. Such a length is a guess about the vendor's prototype. If the
// guess is wrong, the length is any number that a register held. A record shows at most 4096 bytes through
// such a length.
#include <sys/mman.h>

#include <cstring>

#include "tests/vendor_calls/vendor_records.h"

namespace {

// UnshownLengths has 8192 letters at 0x12350000. The last byte of all is a terminator.
class UnshownLengths : public VendorRecords {
protected:
    UnshownLengths() {
        void* const wanted = reinterpret_cast<void*>(0x12350000);
        void* const pages = mmap(wanted, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_EQ(wanted, pages);
        letters = static_cast<CK_BYTE*>(pages);
        std::memset(letters, 'x', kSize - 1);
    }
    ~UnshownLengths() override { munmap(letters, kSize); }

    // Return the first `length` letters as each of the two formats shows them.
    static std::string NewBytes(const std::string& label, std::size_t length) {
        return label + '"' + std::string(length, 'x') + "\" ";
    }
    static std::string OldBytes(std::size_t length) {
        return "\n   ByteString(SimpleText\"" + std::string(length, 'x') + "\");";
    }
    static std::string NewText(const std::string& label, std::size_t length) {
        const std::string text(length, 'x');
        return label + "(" + std::to_string(length) + ",\"" + text + "\") \"" + text + "\" ";
    }
    static std::string OldText(std::size_t length) {
        const std::string text(length, 'x');
        return "\n   ByteString(" + std::to_string(length) + ",\"" + text + "\");Value(SimpleText\"" + text +
               "\");";
    }

    static constexpr std::size_t kSize = 8192;
    CK_BYTE* letters;
};

}  // namespace

TEST_P(UnshownLengths, TokenObjectUidThatIsReturnedEndsAfter4096Bytes) {
    auto* const pulOuidLen = At<CK_ULONG>(0x12345200);
    const std::string inNew = "Slot=7 Type=1001 Obj=1002 Ptr=0x12350000 ";
    const std::string inOld =
        "\n   SlotID(0x7);\n   ULong(0x3e9);\n   ObjectHandle(0x3ea);\n   Pointer(0x12350000);";
    Call("CA_GetTokenObjectUID", slotID, 1001, 1002, letters, pulOuidLen);
    Starts(inNew, inOld);
    for (const auto& [length, shown] : {std::pair{4095, 4095}, {4096, 4096}, {4097, 4096}, {8000, 4096}}) {
        *pulOuidLen = static_cast<CK_ULONG>(length);
        Ends(kSuccessOrTooSmall, inNew + NewBytes("OUID=", static_cast<std::size_t>(shown)),
             inOld + OldBytes(static_cast<std::size_t>(shown)));
    }
}

TEST_P(UnshownLengths, UnavailableLengthPrintsAsSixteenF) {
    auto* const pulOuidLen = At<CK_ULONG>(0x12345200);
    *pulOuidLen = CK_UNAVAILABLE_INFORMATION;
    const std::string inNew = "Slot=7 Type=1001 Obj=1002 Ptr=0x12350000 ";
    const std::string inOld =
        "\n   SlotID(0x7);\n   ULong(0x3e9);\n   ObjectHandle(0x3ea);\n   Pointer(0x12350000);";
    Call("CA_GetTokenObjectUID", slotID, 1001, 1002, letters, pulOuidLen);
    Starts(inNew, inOld);
    Ends(kSuccess, inNew + "OUID=\"ffffffffffffffff\" ",
         inOld + "\n   ByteString(Numeric\"ffffffffffffffff\");");
}

TEST_P(UnshownLengths, TokenObjectUidThatIsGivenEndsAfter4096Bytes) {
    Call("CA_GetTokenObjectHandle", slotID, letters, 8000, nullptr, nullptr);
    const std::string inNew = "Slot=7 Ptr=0x12350000 " + NewBytes("OUID=", 4096) + "Ptr=0x0 Ptr=0x0 ";
    const std::string inOld = "\n   SlotID(0x7);\n   Pointer(0x12350000);" + OldBytes(4096) +
                              "\n   Pointer(0x0);\n   Pointer(0x0);";
    Starts(inNew, inOld);
    Ends(kSuccessOrTooSmall, inNew, inOld);
}

TEST_P(UnshownLengths, ObjectUidThatIsReturnedEndsAfter4096Bytes) {
    auto* const pulOuidLen = At<CK_ULONG>(0x12345200);
    *pulOuidLen = 8000;
    const std::string inNew = "Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x12350000 ";
    const std::string inOld =
        "\n   SlotID(0x7);\n   ULong(0x3e9);\n   ULong(0x3ea);\n   ObjectHandle(0x3eb);\n   "
        "Pointer(0x12350000);";
    Call("CA_GetObjectUID", slotID, 1001, 1002, 1003, letters, pulOuidLen);
    Starts(inNew, inOld);
    Ends(kSuccessOrTooSmall, inNew + NewBytes("", 4096), inOld + OldBytes(4096));
}

TEST_P(UnshownLengths, ObjectUidThatIsGivenEndsAfter4096Bytes) {
    Call("CA_GetObjectHandle", slotID, 1001, letters, 8000, nullptr, nullptr);
    const std::string inNew =
        "Slot=7 Container=1001 Ptr=0x12350000 " + NewBytes("", 4096) + "Ptr=0x0 Ptr=0x0 ";
    const std::string inOld = "\n   SlotID(0x7);\n   ULong(0x3e9);\n   Pointer(0x12350000);" +
                              OldBytes(4096) + "\n   Pointer(0x0);\n   Pointer(0x0);";
    Starts(inNew, inOld);
    Ends(kSuccessOrTooSmall, inNew, inOld);
}

TEST_P(UnshownLengths, ImportedLogSecretEndsAfter4096Bytes) {
    Call("CA_LogImportSecret", hSession, letters, 8000);
    Starts("Sesn=81 Ptr=0x12350000 " + NewBytes("", 4096),
           "\n   SessionHandle(0x51);\n   Pointer(0x12350000);" + OldBytes(4096));
    Ends(kSuccess);
}

TEST_P(UnshownLengths, ExportedLogSecretEndsAfter4096Bytes) {
    auto* const pulLogSecretLen = At<CK_ULONG>(0x12345200);
    *pulLogSecretLen = 8000;
    const std::string inNew = "Sesn=81 Ptr=0x12350000 ";
    const std::string inOld = "\n   SessionHandle(0x51);\n   Pointer(0x12350000);";
    Call("CA_LogExportSecret", hSession, letters, pulLogSecretLen);
    Starts(inNew, inOld);
    Ends(kSuccessOrTooSmall, inNew + NewBytes("", 4096), inOld + OldBytes(4096));
}

TEST_P(UnshownLengths, PathOfTheAuditLogEndsAfter4096Characters) {
    Call("CA_LogSetConfig", hSession, 1001, 1002, 1003, 1004, letters);
    Starts("Sesn=81 1001 1002 1003 1004 Ptr=0x12350000 " + NewText("", 4096),
           "\n   SessionHandle(0x51);\n   ULong(0x3e9);\n   ULong(0x3ea);\n   ULong(0x3eb);\n   ULong(0x3ec);"
           "\n   Pointer(0x12350000);" +
               OldText(4096));
    Ends(kSuccess);
}

TEST_P(UnshownLengths, NameOfAFileOfParametersEndsAfter4096Characters) {
    Call("CA_EncodeECParamsFromFile", nullptr, nullptr, letters);
    Starts("Ptr=0x0 Ptr=0x0 " + NewText("params file=", 4096),
           "\n   Pointer(0x0);\n   Pointer(0x0);" + OldText(4096));
    Ends(kOtherErrors);
}

INSTANTIATE_TEST_SUITE_P(Log, UnshownLengths, testing::Values(LogFormat::kNew, LogFormat::kOld), FormatName);
