#include "tests/fuzz/expected_records.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string_view>

#include "descriptors/vendor_structures.h"
#include "records/ssl3_structures.h"

namespace {

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

struct Row {
    const char* start;
    const char* end;
};
const std::map<std::string, Row> kRows = {
#define RECORDS(Function, Start, End) {#Function, {Start, End}},
#include "tests/fuzz/expected_records.def"
};

bool IsLogged(const FunctionArguments& function) { return function.function != "CA_GetFunctionList"; }

const Row& RowOf(const FunctionArguments& function) {
    const auto row = kRows.find(function.function);
    if (row == kRows.end())
        Fail(function.function + " has no row in tests/fuzz/expected_records.def. Add RECORDS(" +
             function.function +
             ", \"children of its start record\", \"children of its end record\") there.");
    return row->second;
}

struct Kind {
    Shape shape;
    const char* newLabel;  // null: the child's own
    const char* oldLabel;
};
const std::map<std::string, Kind> kNumbers = {
    {"session", {Shape::kNumber, "Sesn=", "SessionHandle"}},
    {"slot", {Shape::kNumber, "Slot=", "SlotID"}},
    {"object", {Shape::kNumber, "Obj=", "ObjectHandle"}},
    {"flags", {Shape::kNumber, "Flgs=", "Flags"}},
    {"ulong", {Shape::kNumber, nullptr, "ULong"}},
    {"hex", {Shape::kHex, nullptr, "ULong"}},
    {"dec", {Shape::kDecimal, nullptr, "ULong"}},
    {"ptr", {Shape::kHex, "Ptr=", "Pointer"}},
    {"ushort", {Shape::kShort, nullptr, "UShort"}},
    {"pedid", {Shape::kShort, nullptr, "UShort"}},
    {"user", {Shape::kShort, "User=", "UserType"}},
    {"mechtype", {Shape::kShort, nullptr, "MechanismType"}},
    {"bool", {Shape::kBoolean, nullptr, "ByteBoolean"}},
};
const std::map<std::string, Kind> kBytes = {
    {"bytes", {Shape::kBytes, nullptr, "ByteString"}},
    {"value", {Shape::kValue, "", "Value"}},
    {"string", {Shape::kText, nullptr, "ByteString"}},
};

constexpr CK_ULONG kUnavailable = CK_UNAVAILABLE_INFORMATION;

ExpectedChild Number(const char* kind, CK_ULONG number, const std::string& label = "") {
    const Kind& known = kNumbers.at(kind);
    return {known.shape, known.newLabel == nullptr ? label : known.newLabel, known.oldLabel, {number}};
}

ExpectedChild Bytes(const char* kind, const std::string& bytes, const std::string& label = "") {
    const Kind& known = kBytes.at(kind);
    return {known.shape, known.newLabel == nullptr ? label : known.newLabel, known.oldLabel, {}, bytes};
}

ExpectedChild Group(const char* newLabel, const char* oldLabel, std::vector<ExpectedChild> children = {}) {
    return {Shape::kChildren, newLabel, oldLabel, {}, {}, std::move(children)};
}

template <std::size_t size>
std::string Field(const unsigned char (&field)[size]) {
    return {reinterpret_cast<const char*>(field), size};
}

// Returns a serial, which stands in the place of a label. It ends at its terminator, if it has one.
template <std::size_t size>
ExpectedChild Serial(const char (&field)[size]) {
    return Bytes("bytes", "", std::string(field, std::find(field, field + size, '\0')));
}

// A RecordOfCall reads a row of the table for one call.
class RecordOfCall {
public:
    RecordOfCall(const FunctionArguments& function, const CallWords& words, const CallMemory& memory,
                 CK_RV rv)
        : function(function), words(words), memory(memory), rv(rv) {}

    std::vector<ExpectedChild> Children(const std::string& row) {
        for (std::size_t begin = 0; begin < row.size();) {
            const std::size_t end = std::min(row.find("; ", begin), row.size());
            AddChild(row.substr(begin, end - begin));
            begin = end + 2;
        }
        return std::move(children);
    }

private:
    void AddChild(const std::string& text) {
        const std::size_t quote = text.find('\'');
        label = quote == text.npos ? "" : text.substr(quote + 1, text.size() - quote - 2);
        std::istringstream stream(text.substr(0, quote));
        std::string kind;
        stream >> kind;
        operands.assign(std::istream_iterator<std::string>(stream), {});
        if (IsLeftOut(kind)) return;
        if (kNumbers.contains(kind)) return Add(Number(kind.c_str(), NumberOf(kind), label));
        if (kBytes.contains(kind)) return AddBytes(kind);
        if (kind == "pin") return Add(Bytes("bytes", Operand(0) == 0 ? "" : "********", label));
        if (kind == "mech") return AddMechanism();
        if (kind == "template" || kind == "names") return AddTemplate(kind == "template");
        if (kind == "slots") return AddList("SlotLst=", "SlotIDList", "slot");
        if (kind == "mechtypes") return AddList("MechTypeLst=", "MechTypeList", "mechtype");
        if (kind == "handles") return AddList("ObjHndLst=", "ObjectHandleList", "object");
        if (kind == "strings" || kind == "values" || kind == "pins") return AddStrings(kind);
        if (kind == "policies") return AddPolicies();
        if (kind == "policy-places") return AddPolicyPlaces();
        if (kind == "policy-set") return AddPolicySet();
        if (kind == "connection") return AddKeysOfConnection();
        AddStructure(kind);
    }

    // Takes the conditions off the front of a kind.
    bool IsLeftOut(std::string& kind) const {
        if (const std::size_t colon = kind.find(':'); colon != kind.npos) {
            const std::string condition = kind.substr(0, colon);
            kind.erase(0, colon + 1);
            return !Holds(condition);
        }
        for (std::size_t i = 0; kind.starts_with('?'); ++i) {
            kind.erase(0, 1);
            if (AddressOperand(i) == 0) return true;
        }
        return false;
    }

    bool Holds(const std::string& condition) const {
        if (condition == "part") return !IsQuery();
        if (condition == "query") return IsQuery();
        if (condition == "available") {
            CK_ATTRIBUTE first{};
            memory.Read(Operand(0), first);
            return Operand(0) != 0 && first.ulValueLen != kUnavailable;
        }
        const CK_ULONG form = words[function.Index("ulAuthForm")];
        const bool isNamed = form < 10 && condition.find(static_cast<char>('0' + form)) != condition.npos;
        return condition.starts_with("unless") ? !isNamed : isNamed;
    }

    bool IsQuery() const {
        for (std::size_t i = 0; i < function.arguments.size(); ++i) {
            if (function.arguments[i].kind == ArgumentKind::kOutputBytes)
                return words[i] == 0 || rv == CKR_BUFFER_TOO_SMALL;
        }
        Fail(function.function + " has no part");
    }

    // Returns the value of an operand: "name", "*name", "32".
    CK_ULONG Operand(std::size_t i) const {
        const std::string& operand = operands.at(i);
        if (operand[0] == '*') return memory.Word(AddressOperand(i));
        return operand[0] <= '9' ? std::stoul(operand) : AddressOperand(i);
    }
    // Returns the argument itself.
    CK_ULONG AddressOperand(std::size_t i) const {
        const std::string& operand = operands.at(i);
        return words[function.Index(operand.substr(operand[0] == '*' ? 1 : 0))];
    }

    CK_ULONG NumberOf(const std::string& kind) const {
        return kind == "bool" ? static_cast<unsigned char>(Operand(0)) : Operand(0);
    }

    // If the length of bytes is "unavailable", the record shows the word of that length.
    std::string BytesAt(CK_ULONG address, CK_ULONG length) const {
        return length == kUnavailable ? std::string(8, '\xff') : memory.Bytes(address, length);
    }

    void Add(ExpectedChild child) { children.push_back(std::move(child)); }

    // Returns whether the second operand is "~", or "~" and the most characters that the text has.
    bool IsText() const { return operands.at(1).front() == '~'; }

    std::string TextAt(CK_ULONG address) const {
        const std::string most = operands.at(1).substr(1);
        return memory.Text(address).substr(0, most.empty() ? std::string::npos : std::stoul(most));
    }

    void AddBytes(const std::string& kind) {
        Add(Bytes(kind.c_str(), IsText() ? TextAt(Operand(0)) : BytesAt(Operand(0), Operand(1)), label));
    }

    void AddMechanism() {
        CK_MECHANISM mechanism{};
        memory.Read(Operand(0), mechanism);
        Add({Shape::kMechanism,
             "Mech=",
             "Mechanism",
             {mechanism.mechanism},
             BytesAt(reinterpret_cast<CK_ULONG>(mechanism.pParameter), mechanism.ulParameterLen)});
    }

    void AddTemplate(bool hasValues) {
        ExpectedChild list = Group("AttrList=", "AttributeList");
        const std::size_t count = memory.ReadableCount(Operand(0), Operand(1), sizeof(CK_ATTRIBUTE));
        for (std::size_t i = 0; i < count; ++i) {
            CK_ATTRIBUTE attribute{};
            memory.Read(Operand(0) + i * sizeof attribute, attribute);
            list.children.push_back(
                {hasValues ? Shape::kAttribute : Shape::kType,
                 "",
                 "Attribute",
                 {attribute.type},
                 BytesAt(reinterpret_cast<CK_ULONG>(attribute.pValue), attribute.ulValueLen)});
        }
        Add(list);
    }

    void AddList(const char* newLabel, const char* oldLabel, const char* element) {
        ExpectedChild list = Group(newLabel, oldLabel);
        const CK_ULONG claimed = operands.size() > 2 ? std::min(Operand(1), Operand(2)) : Operand(1);
        const std::size_t count = memory.ReadableCount(Operand(0), claimed, sizeof(CK_ULONG));
        for (std::size_t i = 0; i < count; ++i)
            list.children.push_back(Number(element, WordAt(Operand(0), i)));
        Add(list);
    }

    CK_ULONG WordAt(CK_ULONG array, std::size_t i) const {
        return array == 0 ? 0 : memory.Word(array + i * sizeof(CK_ULONG));
    }

    // Adds a child for each entry. Ends at the first entry without an address or a length.
    void AddStrings(const std::string& kind) {
        for (std::size_t i = 0; i < Operand(2); ++i) {
            const CK_ULONG string = WordAt(Operand(0), i);
            const CK_ULONG length = WordAt(Operand(1), i);
            if (string == 0 || length == 0) return;
            const std::string shown = kind == "pins" ? "********" : BytesAt(string, length);
            Add(Bytes(kind == "values" ? "value" : "bytes", shown, label));
        }
    }

    void AddPolicies() {
        const std::size_t ids = memory.ReadableCount(Operand(1), Operand(0), sizeof(CK_ULONG));
        const std::size_t values = memory.ReadableCount(Operand(2), Operand(0), sizeof(CK_ULONG));
        Add(Number("ulong", Operand(0), "cnt="));
        for (std::size_t i = 0; i < std::max(ids, values); ++i) {
            Add(Number("ulong", WordAt(Operand(1), i), "id="));
            Add(Number("ulong", WordAt(Operand(2), i), "val="));
        }
    }

    void AddSize(std::size_t operand, const char* sizeLabel) {
        Add(Number("ptr", Operand(operand)));
        if (Operand(operand) != 0) Add(Number("ulong", memory.Word(Operand(operand)), sizeLabel));
    }

    void AddPolicyPlaces() {
        Add(Number("ptr", Operand(0)));
        AddSize(1, "idSize=");
        Add(Number("ptr", Operand(2)));
        AddSize(3, "valSize=");
    }

    void AddPolicySet() {
        AddSize(1, "idSize=");
        AddSize(3, "valSize=");
        if (Operand(0) == 0 || Operand(2) == 0) return;
        const auto shown = [&](std::size_t array) {
            return memory.ReadableCount(Operand(array), memory.Word(Operand(array + 1)), sizeof(CK_ULONG));
        };
        for (std::size_t i = 0; i < std::max(shown(0), shown(2)); ++i) {
            if (i < shown(0)) Add(Number("ulong", WordAt(Operand(0), i), "id="));
            if (i < shown(2)) Add(Number("ulong", WordAt(Operand(2), i), "val="));
        }
    }

    // Adds the handles that one mechanism returns through its parameter.
    void AddKeysOfConnection() {
        CK_MECHANISM mechanism{};
        ckscribe::CK_SSL3_KEY_MAT_PARAMS connection{};
        ckscribe::CK_SSL3_KEY_MAT_OUT keys{};
        memory.Read(Operand(0), mechanism);
        if (mechanism.mechanism != CKM_SSL3_KEY_AND_MAC_DERIVE) return;
        memory.Read(reinterpret_cast<CK_ULONG>(mechanism.pParameter), connection);
        memory.Read(reinterpret_cast<CK_ULONG>(connection.pReturnedKeyMaterial), keys);
        for (const CK_OBJECT_HANDLE key :
             {keys.hClientMacSecret, keys.hServerMacSecret, keys.hClientKey, keys.hServerKey})
            Add(Number("object", key));
    }

    template <class Structure, class ChildrenOf>
    void AddGroup(const char* newLabel, const char* oldLabel, const ChildrenOf& childrenOf) {
        Structure structure{};
        const bool isThere = memory.Read(Operand(0), structure);
        Add(Group(newLabel, oldLabel, isThere ? childrenOf(structure) : std::vector<ExpectedChild>()));
    }

    void AddStructure(const std::string& kind) {
        using Children = std::vector<ExpectedChild>;
        if (kind == "info") {
            AddGroup<CK_INFO>("Info=", "Info", [](const CK_INFO& info) {
                const char version[] = {static_cast<char>(info.cryptokiVersion.major),
                                        static_cast<char>(info.cryptokiVersion.minor)};
                return Children{Bytes("bytes", {version, sizeof version}),
                                Bytes("bytes", Field(info.manufacturerID)), Number("flags", info.flags)};
            });
        } else if (kind == "slotinfo") {
            AddGroup<CK_SLOT_INFO>("SlotInfo=", "SlotInfo", [](const CK_SLOT_INFO& info) {
                return Children{Bytes("bytes", Field(info.slotDescription)),
                                Bytes("bytes", Field(info.manufacturerID)), Number("flags", info.flags)};
            });
        } else if (kind == "tokeninfo") {
            AddGroup<CK_TOKEN_INFO>("TokenInfo=", "TokenInfo", [](const CK_TOKEN_INFO& info) {
                return Children{Bytes("bytes", Field(info.label)),
                                Bytes("bytes", Field(info.manufacturerID)),
                                Bytes("bytes", Field(info.model)),
                                Bytes("bytes", Field(info.serialNumber)),
                                Number("flags", info.flags),
                                Number("ushort", info.ulMaxSessionCount),
                                Number("ushort", info.ulSessionCount),
                                Number("ushort", info.ulMaxRwSessionCount),
                                Number("ushort", info.ulRwSessionCount),
                                Number("ushort", info.ulMaxPinLen),
                                Number("ushort", info.ulMinPinLen),
                                Number("ulong", info.ulTotalPublicMemory),
                                Number("ulong", info.ulFreePublicMemory),
                                Number("ulong", info.ulTotalPrivateMemory),
                                Number("ulong", info.ulFreePrivateMemory)};
            });
        } else if (kind == "mofn") {
            AddGroup<CA_M_OF_N_STATUS>("MofNStatus=", "MofNStatusInfo", [](const CA_M_OF_N_STATUS& status) {
                Children shown;
                for (const unsigned long word : status.words) shown.push_back(Number("ulong", word));
                return shown;
            });
        } else if (kind == "ha") {
            AddGroup<CK_HA_STATUS>("HAStatus", "HAStatus", [](const CK_HA_STATUS& status) {
                Children shown = {Serial(status.groupSerial)};
                for (std::size_t i = 0; i < std::min<std::size_t>(status.listSize, 32); ++i) {
                    const CK_HA_MEMBER& member = status.memberList[i];
                    shown.push_back(
                        Group("HAMember", "HAMember",
                              {Serial(member.memberSerial), Number("ushort", member.memberStatus)}));
                }
                shown.push_back(Number("ushort", status.listSize));
                return shown;
            });
        } else if (kind == "sessioninfo") {
            CK_SESSION_INFO info{};
            memory.Read(Operand(0), info);
            Add({Shape::kSession,
                 "SesInfo=",
                 "SessionInfo",
                 {info.slotID, info.state, info.flags, info.ulDeviceError}});
        } else if (kind == "mechinfo") {
            CK_MECHANISM_INFO info{};
            memory.Read(Operand(0), info);
            Add({Shape::kKeySizes,
                 "MechInfo=",
                 "MechanismInfo",
                 {info.ulMinKeySize, info.ulMaxKeySize, info.flags}});
        } else {
            Fail(function.function + ": unknown kind " + kind);
        }
    }

    const FunctionArguments& function;
    const CallWords& words;
    const CallMemory& memory;
    CK_RV rv;

    // The label and the operands belong to the child that is being added.
    std::string label;
    std::vector<std::string> operands;

    std::vector<ExpectedChild> children;
};

// These functions are recorded as a part of an operation.
const std::set<std::string> kOperations = {"Encrypt",       "Decrypt",     "Digest",        "Sign",
                                           "SignRecover",   "Verify",      "VerifyRecover", "DigestEncrypt",
                                           "DecryptDigest", "SignEncrypt", "DecryptVerify"};

ExpectedRecord RecordOf(const std::string& function) {
    const std::string name = function.substr(function.find('_') + 1);
    if (function.starts_with("CA_")) return {name, ""};
    if (name == "GetFunctionStatus" || name == "CancelFunction") return {"UnknownType", ""};
    if (name == "FindObjectsInit") return {"FindObjects", "Init"};
    if (name == "FindObjectsFinal") return {"FindObjects", ""};
    for (const std::string part : {"Init", "Update", "Final", "Key"}) {
        if (!name.ends_with(part)) continue;
        const std::string operation = name.substr(0, name.size() - part.size());
        if (kOperations.contains(operation)) return {operation, part};
    }
    return {name, ""};
}

}  // namespace

ExpectedRecord ExpectedStart(const FunctionArguments& function, const CallWords& words,
                             const CallMemory& memory) {
    ExpectedRecord record = RecordOf(function.function);
    if (IsLogged(function))
        record.children = RecordOfCall(function, words, memory, CKR_OK).Children(RowOf(function).start);
    return record;
}

ExpectedRecord ExpectedEnd(const FunctionArguments& function, const CallWords& words,
                           const CallMemory& memory, CK_RV rv) {
    ExpectedRecord record = RecordOf(function.function);
    record.isStart = false;
    record.rv = rv;
    const bool isOfVendor = function.function.starts_with("CA_");
    if (isOfVendor && rv != CKR_OK && rv != CKR_BUFFER_TOO_SMALL) return record;
    if (IsLogged(function))
        record.children = RecordOfCall(function, words, memory, rv).Children(RowOf(function).end);
    return record;
}

void RequireRowForEachLoggedFunction() {
    for (const FunctionArguments& function : ArgumentsOfFunctions()) {
        if (IsLogged(function)) RowOf(function);
    }
}
