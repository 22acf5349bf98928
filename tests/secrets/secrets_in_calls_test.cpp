// Every function is called with planted secrets. They stand wherever the function takes or returns a secret,
// and wherever no record looks. Not even four bytes of a secret may be in the log, the error file or the
// output.
#include <cstring>
#include <type_traits>

#include "descriptors/vendor_structures.h"
#include "tests/calls/call_data.h"
#include "tests/calls/every_function.h"
#include "tests/expected_functions.h"
#include "tests/secrets/planted_secret.h"
#include "tests/secrets/secret_search.h"

namespace {

// These bytes stand in front of a secret's text. They decide how a record would write it: as text, in
// hexadecimal digits, or as text with escapes.
const std::string kBeginnings[] = {"", "\xEE\xEE", "\x01"};

// These are the parameters of password-based key generation. A mechanism with them has a password.
struct PasswordParameters {
    CK_BYTE_PTR pInitVector;
    CK_UTF8CHAR_PTR pPassword;
    CK_ULONG ulPasswordLen;
    CK_BYTE_PTR pSalt;
    CK_ULONG ulSaltLen;
    CK_ULONG ulIteration;
};
constexpr CK_MECHANISM_TYPE kPasswordBasedMechanism = 0x3a8;

// Arguments makes the words of one call. The types of the parameters decide what is passed where no secret
// is. Buffers are larger than all lengths and counts say, and each ends where a secret begins.
//
// Everything lies at known addresses. Records show addresses, and an unknown one might look like a part of a
// secret.
class Arguments {
public:
    // `number` stands for every number that is passed by value. If `plantsData` is true, data are secrets as
    // well: every byte string, attribute value and parameter of a mechanism.
    Arguments(CK_ULONG number, const std::string& beginning, bool plantsData = false)
        : number(number), beginning(beginning), plantsData(plantsData) {}

    template <class... Parameters>
    CallWords For(std::type_identity<CK_RV(Parameters...)>, const std::vector<SecretArgument>& secrets) {
        CallWords words;
        for (TargetWord& word : words) word = Address(NewSecret());
        std::size_t i = 0;
        ((words[i++] = WordFor<Parameters>()), ...);
        for (const SecretArgument& secret : secrets) Plant(secret, words);
        return words;
    }

    static constexpr CK_ULONG kSecretsInList = 3;

private:
    // Every array has this many elements. All numbers that are passed are smaller.
    static constexpr std::size_t kElements = 8;
    static constexpr CK_ULONG kReturnedNumber = 4;

    template <class Parameter>
    TargetWord WordFor() {
        if constexpr (std::is_same_v<Parameter, CK_BBOOL>) {
            return CK_TRUE;
        } else if constexpr (std::is_integral_v<Parameter>) {
            return number;
        } else if constexpr (std::is_same_v<Parameter, CK_BYTE_PTR>) {
            return Address(NewText());
        } else if constexpr (std::is_same_v<Parameter, CK_ULONG_PTR>) {
            return Address(NewArray(kReturnedNumber));
        } else if constexpr (std::is_same_v<Parameter, CK_BYTE_PTR*>) {
            return Address(NewArray(NewText()));
        } else if constexpr (std::is_same_v<Parameter, CK_ATTRIBUTE_PTR>) {
            const CK_ATTRIBUTE_TYPE type = plantsData ? CKA_VALUE : CKA_LABEL;
            return Address(NewArray(CK_ATTRIBUTE{type, NewText(), kReturnedNumber}));
        } else if constexpr (std::is_same_v<Parameter, CK_MECHANISM_PTR>) {
            return Address(NewMechanism());
        } else if constexpr (std::is_same_v<Parameter, CK_VOID_PTR>) {
            return Address(NewSecret());
        } else {
            return Address(New(std::vector<CK_BYTE>(kLargestStructure)));
        }
    }
    static constexpr std::size_t kLargestStructure = 1056;

    void Plant(const SecretArgument& secret, CallWords& words) {
        if (secret.kind == SecretArgument::kList) {
            std::vector<CK_BYTE_PTR> addresses;
            std::vector<CK_ULONG> lengths;
            for (CK_ULONG i = 0; i < kSecretsInList; ++i) {
                addresses.push_back(NewSecret());
                lengths.push_back(secretLength);
            }
            words[secret.address] = Address(New(addresses));
            words[secret.length] = Address(New(lengths));
            words[secret.count] = kSecretsInList;
            return;
        }
        words[secret.address] = Address(NewSecret());
        const bool isReturned = secret.kind == SecretArgument::kReturned;
        words[secret.length] = isReturned ? Address(New<CK_ULONG>({secretLength})) : secretLength;
    }

    static TargetWord Address(const void* pointer) { return reinterpret_cast<TargetWord>(pointer); }

    template <class Element>
    Element* New(const std::vector<Element>& elements) {
        used = (used + alignof(std::max_align_t) - 1) / alignof(std::max_align_t) * alignof(std::max_align_t);
        const std::size_t size = elements.size() * sizeof(Element);
        EXPECT_LE(used + size, sizeof(Page));
        void* const place = memory.At<Page>(kPage).data() + used;
        std::memcpy(place, elements.data(), size);
        used += size;
        return static_cast<Element*>(place);
    }

    // The secret has a terminator, like a text.
    CK_BYTE_PTR NewSecret() {
        const std::string secret = NextSecret();
        secretLength = secret.size();
        return New(Bytes(secret + '\0'));
    }
    std::string NextSecret() const {
        static std::size_t count = 0;
        return beginning + PlantedSecret(count++);
    }

    template <class Element>
    Element* NewArray(const Element& element) {
        Element* const array = New(std::vector<Element>(kElements, element));
        NewSecret();
        return array;
    }
    CK_BYTE_PTR NewText() {
        if (plantsData) return NewSecret();
        return New(Bytes("a text that everyone may see ..." + std::string(1, '\0') + NextSecret() + '\0'));
    }
    CK_MECHANISM_PTR NewMechanism() {
        CK_BYTE_PTR const password = NewSecret();
        if (plantsData) return New<CK_MECHANISM>({{CKM_AES_CBC, password, secretLength}});
        auto* const parameters =
            New<PasswordParameters>({{NewText(), password, secretLength, NewText(), 8, 1000}});
        return New<CK_MECHANISM>({{kPasswordBasedMechanism, parameters, sizeof *parameters}});
    }

    static constexpr std::uintptr_t kPage = 0x12345000;
    using Page = std::array<CK_BYTE, 0x1000>;

    MemoryAtFixedAddress memory;
    std::size_t used = 0;
    const CK_ULONG number;
    const std::string& beginning;
    const bool plantsData;
    std::size_t secretLength = 0;  // of the latest one
};

struct FunctionParameters {
    std::string function;
    std::string parameters;  // "(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen)"
};
const std::vector<FunctionParameters> kParameters = {
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) {"C_" #Name, #Parameters},
#define CA_ROW(Name, Type, Class, Level, Parameters) {"CA_" #Name, #Parameters},
#include "functions/functions.def"
};

// Returns whether the name of a parameter ends like the name of a secret.
bool NamesASecret(const std::string& parameters) {
    for (const std::string ending : {"Pin", "Password", "Domain", "Kev", "Secret", "Secrets"}) {
        for (const char* separator : {",", ")"}) {
            if (parameters.find(ending + separator) != parameters.npos) return true;
        }
    }
    return false;
}

std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
    return count;
}

// These functions take or return a name: the label of a token or a container, the name of a host or a file. A
// name is shown even where data are hidden.
const Names kFunctionsWithNames = {
    "C_InitToken",      "CA_ConfigureRemotePED",     "CA_GetUserContainerName",
    "CA_InitAudit",     "CA_SetUserContainerName",   "CA_GetContainerName",
    "CA_LogVerifyFile", "CA_CreateContainer",        "CA_LogSetConfig",
    "CA_LogGetConfig",  "CA_EncodeECParamsFromFile",
};

class SecretsInCalls : public EveryFunction {
protected:
    // Makes data planted secrets, too, from here on.
    void PlantData() { plantsData = true; }

    bool PlantsDataIn(const std::string& function) const {
        return plantsData && std::find(kFunctionsWithNames.begin(), kFunctionsWithNames.end(), function) ==
                                 kFunctionsWithNames.end();
    }

    // Calls `visit` with the name and the type of each function that is exported.
    template <class Visit>
    static void ForEachFunction(const Visit& visit) {
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    visit("C_" #Name, std::type_identity<CK_RV Parameters>());
#define CA_LIST_ROW(Name, Type) visit("CA_" #Name, std::type_identity<CK_RV(CK_FUNCTION_LIST_PTR_PTR)>());
#define CA_ROW(Name, Type, Class, Level, Parameters) \
    visit("CA_" #Name, std::type_identity<CK_RV Parameters>());
#define CA_BARE_ROW(Name, ...) visit("CA_" #Name, std::type_identity<CK_RV()>());
#include "functions/functions.def"
    }

    template <class Type>
    void CallWithSecrets(const std::string& function, Type type, CK_ULONG number,
                         const std::string& beginning) {
        const ExpectedFunction* const row = FindExpectedFunction(function);
        ASSERT_NE(nullptr, row) << HowToExpect(function);
        for (const CK_RV result : {CKR_OK, CKR_BUFFER_TOO_SMALL, CKR_PIN_INCORRECT}) {
            Arguments arguments(number, beginning, PlantsDataIn(function));
            script.result = result;
            EXPECT_EQ(function == "C_GetFunctionStatus" ? CKR_FUNCTION_NOT_SUPPORTED : result,
                      CallWith(function, arguments.For(type, row->secrets)));
        }
    }

    // Calls the function once for each number from 0 to 6, which all numbers of the call have. The vendor's
    // seven forms of authorisation are among them.
    template <class Type>
    void CallInEveryWay(const std::string& function, Type type) {
        for (CK_ULONG number = 0; number <= 6; ++number) {
            for (const std::string& beginning : kBeginnings)
                CallWithSecrets(function, type, number, beginning);
        }
    }

    static void ExpectNoSecret(const std::string& written) {
        const auto found = FindSecret(written, kLeastPart);
        if (!found) return;
        const std::size_t begin = written.rfind('\n', found->offset) + 1;
        ADD_FAILURE() << "a secret as " << found->form << ": " << written.substr(begin, 400);
    }

    void ExpectNoSecretInLogOf(const std::string& format) {
        Set("NewFormat", format);
        Restart();
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        ForEachFunction([&](const std::string& function, auto type) {
            SCOPED_TRACE(function);
            const std::size_t before = LogSize();
            CallInEveryWay(function, type);
            const std::string log = LogSince(before);
            EXPECT_EQ(function == "CA_GetFunctionList", log.empty());
            ExpectNoSecret(log);
            script.received.clear();
        });
        const std::string output = testing::internal::GetCapturedStdout();
        ExpectNoSecret(output);
        ExpectNoSecret(testing::internal::GetCapturedStderr());
        ExpectNoSecret(Errors());
    }

    // Expects the same of the events file, with or without a text log beside it.
    void ExpectNoSecretInEvents() {
        Set("Events", EventsPath());
        Restart();
        ForEachFunction([&](const std::string& function, auto type) {
            SCOPED_TRACE(function);
            WriteFile(EventsPath(), "");
            CallInEveryWay(function, type);
            EXPECT_EQ(function == "CA_GetFunctionList", Events().empty());
            ExpectNoSecret(Events());
            script.received.clear();
        });
    }

    // Expects a record to have as many masks as its function has secrets.
    void ExpectMasksInLogOf(const std::string& format) {
        constexpr CK_ULONG kFormWithSecrets = 1;
        Set("NewFormat", format);
        Restart();
        ForEachFunction([&](const std::string& function, auto type) {
            SCOPED_TRACE(function);
            const std::size_t before = LogSize();
            const ExpectedFunction* const row = FindExpectedFunction(function);
            ASSERT_NE(nullptr, row) << HowToExpect(function);
            Arguments arguments(kFormWithSecrets, kBeginnings[0]);
            CallWith(function, arguments.For(type, row->secrets));
            std::size_t expected = 0;
            for (const SecretArgument& secret : row->secrets)
                expected += secret.kind == SecretArgument::kList ? Arguments::kSecretsInList : 1;
            const bool isInBothRecords = function == "CA_CreateContainer";
            if (isInBothRecords) expected *= 2;
            EXPECT_EQ(expected, CountOf("********", LogSince(before)));
        });
    }

private:
    bool plantsData = false;
};

}  // namespace

TEST(SecretArguments, SecretsOfTheTable_AreThoseThatParametersName) {
    // COMPAT: Records of these two functions show the audit log's key, which the functions move from token to
    // token.
    const Names shown = {"CA_LogImportSecret", "CA_LogExportSecret"};
    Names expected;
    for (const ExpectedFunction& row : kExpectedFunctions) {
        if (!row.secrets.empty()) expected.push_back(row.name);
    }
    expected.insert(expected.end(), shown.begin(), shown.end());
    Names named;
    for (const FunctionParameters& row : kParameters) {
        if (NamesASecret(row.parameters)) named.push_back(row.function);
    }
    EXPECT_EQ(Sorted(expected), Sorted(named)) << "The names of a function's parameters and its secrets in "
                                                  "tests/expected_functions.def contradict each "
                                                  "other. Name the secrets in the row.";
}

TEST_F(SecretsInCalls, NewFormat_NoSecretIsWritten) { ExpectNoSecretInLogOf("1"); }

TEST_F(SecretsInCalls, OldFormat_NoSecretIsWritten) { ExpectNoSecretInLogOf("0"); }

// This shows that every secret of the table stands where its function expects it.
TEST_F(SecretsInCalls, NewFormat_EverySecretIsMasked) { ExpectMasksInLogOf("1"); }

TEST_F(SecretsInCalls, OldFormat_EverySecretIsMasked) { ExpectMasksInLogOf("0"); }

TEST_F(SecretsInCalls, DataHiddenInNewFormat_NoDataIsWritten) {
    PlantData();
    Set("HideData", "1");
    ExpectNoSecretInLogOf("1");
}

TEST_F(SecretsInCalls, DataHiddenInOldFormat_NoDataIsWritten) {
    PlantData();
    Set("HideData", "1");
    ExpectNoSecretInLogOf("0");
}

TEST_F(SecretsInCalls, EventsWithoutTheKeyHideData_NoDataIsWritten) {
    PlantData();
    Set("Enabled", "0");
    ExpectNoSecretInEvents();
}

TEST_F(SecretsInCalls, EventsWithHiddenData_NoDataIsWritten) {
    PlantData();
    Set("Enabled", "0");
    Set("HideData", "1");
    ExpectNoSecretInEvents();
}

TEST_F(SecretsInCalls, EventsWithData_NoSecretIsWritten) {
    Set("Enabled", "0");
    Set("HideData", "0");
    ExpectNoSecretInEvents();
}

// This shows that the tests above plant data where they are shown.
TEST_F(SecretsInCalls, DataShown_PlantedDataAreFound) {
    PlantData();
    Set("Events", EventsPath());
    Set("HideData", "0");
    Restart();
    const Names expected = {"C_CreateObject",  "C_Decrypt",          "C_DeriveKey",      "C_Digest",
                            "C_Encrypt",       "C_EncryptInit",      "C_GenerateRandom", "C_SeedRandom",
                            "C_Sign",          "C_UnwrapKey",        "C_Verify",         "C_WrapKey",
                            "CA_Extract",      "CA_Insert",          "CA_LogExternal",   "CA_LogImportSecret",
                            "CA_SIMMultiSign", "CA_WriteCommonStore"};
    ForEachFunction([&](const std::string& function, auto type) {
        if (std::find(expected.begin(), expected.end(), function) == expected.end()) return;
        SCOPED_TRACE(function);
        WriteFile(LogPath(), "");
        WriteFile(EventsPath(), "");
        for (CK_ULONG number = 0; number <= 6; ++number)
            CallWithSecrets(function, type, number, kBeginnings[0]);
        EXPECT_TRUE(FindSecret(Log(), kLeastPart).has_value());
        EXPECT_TRUE(FindSecret(Events(), kLeastPart).has_value());
        WriteFile(LogPath(), "");
        WriteFile(EventsPath(), "");
    });
}

// The library writes to its error file in this test.
TEST_F(SecretsInCalls, LogCannotBeWritten_NoSecretIsReported) {
    Set("File", directory.Path());
    Set("LibUNIX64", TargetNamed("scripted_target_without_self_test"));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ForEachFunction([&](const std::string& function, auto type) {
        const ExpectedFunction* const row = FindExpectedFunction(function);
        ASSERT_NE(nullptr, row) << HowToExpect(function);
        Arguments arguments(1, kBeginnings[0]);
        CallWith(function, arguments.For(type, row->secrets));
    });
    Exported<void()>("CkLogSpecialFinalize")();
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ("Failed to load function 'CA_PerformSelfTest'.\n", output);
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_NE("", Errors());
    ExpectNoSecret(Errors());
}
