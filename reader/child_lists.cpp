#include "reader/child_lists.h"

#include <algorithm>
#include <map>
#include <vector>

namespace ckscribe {

namespace {

constexpr ChildElement Member(std::string_view kind, std::string_view name) {
    return {KindOf(kind), false, false, "", name};
}

constexpr ChildElement kAttributes[] = {{KindOf("attribute"), false, true}};
constexpr ChildElement kSlots[] = {{KindOf("slot"), false, true}};
constexpr ChildElement kMechanismTypes[] = {{KindOf("mechtype"), false, true}};
constexpr ChildElement kHandles[] = {{KindOf("object"), false, true}};
constexpr ChildElement kInfo[] = {Member("bytes", "cryptokiVersion"), Member("bytes", "manufacturerID"),
                                  Member("flags", "flags")};
constexpr ChildElement kSlotInfo[] = {Member("bytes", "slotDescription"), Member("bytes", "manufacturerID"),
                                      Member("flags", "flags")};
constexpr ChildElement kTokenInfo[] = {Member("bytes", "label"),
                                       Member("bytes", "manufacturerID"),
                                       Member("bytes", "model"),
                                       Member("bytes", "serialNumber"),
                                       Member("flags", "flags"),
                                       Member("ushort", "ulMaxSessionCount"),
                                       Member("ushort", "ulSessionCount"),
                                       Member("ushort", "ulMaxRwSessionCount"),
                                       Member("ushort", "ulRwSessionCount"),
                                       Member("ushort", "ulMaxPinLen"),
                                       Member("ushort", "ulMinPinLen"),
                                       Member("ulong", "ulTotalPublicMemory"),
                                       Member("ulong", "ulFreePublicMemory"),
                                       Member("ulong", "ulTotalPrivateMemory"),
                                       Member("ulong", "ulFreePrivateMemory")};
constexpr ChildElement kMofN[] = {Member("ulong", ""), Member("ulong", ""), Member("ulong", ""),
                                  Member("ulong", ""), Member("ulong", "")};
constexpr ChildElement kMember[] = {{KindOf("serial")}, Member("ushort", "memberStatus")};
constexpr ChildElement kHaStatus[] = {
    {KindOf("serial")}, {KindOf("member"), false, true}, Member("ushort", "listSize")};

// Reads one child of a row, for example "?bytes 'OUID='".
ChildElement ElementOf(std::string_view row) {
    ChildElement element;
    element.isOptional = row.starts_with('?');
    element.isRepeated = row.starts_with('*');
    if (element.isOptional || element.isRepeated) row.remove_prefix(1);
    const std::size_t quote = row.find('\'');
    if (quote != row.npos) element.label = row.substr(quote + 1, row.size() - quote - 2);
    element.kind = KindOf(row.substr(0, row.find(' ')));
    return element;
}

std::vector<ChildElement> ElementsOf(std::string_view row) {
    std::vector<ChildElement> elements;
    while (!row.empty()) {
        const std::size_t end = std::min(row.find("; "), row.size());
        elements.push_back(ElementOf(row.substr(0, end)));
        row.remove_prefix(std::min(end + 2, row.size()));
    }
    return elements;
}

struct Lists {
    std::vector<ChildElement> start;
    std::vector<ChildElement> end;
};

const Lists& ListsOf(FunctionIndex function) {
    static const std::vector<Lists> all = [] {
        std::vector<Lists> lists;
        const auto set = [&lists](std::string_view name, std::string_view start, std::string_view end) {
            const std::size_t index = IndexOf(FunctionOfName(name));
            if (index >= lists.size()) lists.resize(index + 1);
            lists[index] = {ElementsOf(start), ElementsOf(end)};
        };
#define CHILDREN(Function, Start, End) set(#Function, Start, End);
#include "reader/record_children.def"
        // The records of two functions print this name and do not say which of the two they are about.
        set(kUnknownType, "session", "");
        return lists;
    }();
    static const Lists none;
    return IndexOf(function) < all.size() ? all[IndexOf(function)] : none;
}

}  // namespace

std::span<const ChildElement> MembersOf(std::uint8_t kind) {
    static const std::map<std::uint8_t, std::span<const ChildElement>> members = {
        {KindOf("template"), kAttributes}, {KindOf("names"), kAttributes},
        {KindOf("slots"), kSlots},         {KindOf("mechtypes"), kMechanismTypes},
        {KindOf("handles"), kHandles},     {KindOf("info"), kInfo},
        {KindOf("slotinfo"), kSlotInfo},   {KindOf("tokeninfo"), kTokenInfo},
        {KindOf("mofn"), kMofN},           {KindOf("ha"), kHaStatus},
        {KindOf("member"), kMember}};
    return members.at(kind);
}

std::span<const ChildElement> ChildrenOfRecord(FunctionIndex function, bool isStart) {
    const Lists& lists = ListsOf(function);
    return isStart ? lists.start : lists.end;
}

}  // namespace ckscribe
