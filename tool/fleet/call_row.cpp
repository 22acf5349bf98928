#include "tool/fleet/call_row.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

#include "reader/event_line.h"
#include "reader/latency_histogram.h"
#include "tool/call_roles.h"
#include "tool/convert/value_json.h"

namespace ckscribe {

namespace {

// Appends a text, which is valid UTF-8, as a string of JSON.
void AddQuoted(std::string& rows, std::string_view text) {
    rows += '"';
    while (!text.empty()) {
        const auto* const special = std::ranges::find_if(text, [](char character) {
            return static_cast<unsigned char>(character) < 32 || character == '"' || character == '\\';
        });
        const auto plain = static_cast<std::size_t>(special - text.begin());
        rows += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const char character = text.front();
        if (character == '"' || character == '\\') {
            rows += {'\\', character};
        } else {
            fmt::format_to(std::back_inserter(rows), "\\u{:04x}", static_cast<unsigned char>(character));
        }
        text.remove_prefix(1);
    }
    rows += '"';
}

void AddText(std::string& rows, std::string_view key, std::string_view text) {
    if (text.empty()) return;
    fmt::format_to(std::back_inserter(rows), ",\"{}\":", key);
    AddQuoted(rows, text);
}

template <class Number>
void AddNumber(std::string& rows, std::string_view key, const std::optional<Number>& number) {
    if (number) fmt::format_to(std::back_inserter(rows), ",\"{}\":{}", key, *number);
}

// Labels in a log may be no UTF-8; LineOf replaces such bytes.
std::string AnyText(const std::string& text) { return LineOf(nlohmann::ordered_json(text)); }

template <class Field>
void AddTexts(std::string& rows, std::string_view key, const std::vector<ToldObject>& objects, Field field) {
    fmt::format_to(std::back_inserter(rows), ",\"{}\":[", key);
    for (const ToldObject& object : objects) {
        if (&object != &objects.front()) rows += ',';
        rows += AnyText(object.info.*field);
    }
    rows += ']';
}

void AddObjects(std::string& rows, CallRole role, const Call& call) {
    std::vector<ToldObject> objects = ObjectsToldBy(role, call);
    if (role == CallRole::kBeginSearch) objects = {{0, InfoIn(call.In())}};
    if (objects.empty()) return;
    rows += ",\"objects\":[";
    for (const ToldObject& object : objects)
        fmt::format_to(std::back_inserter(rows), "{}{}", &object == &objects.front() ? "" : ",",
                       object.handle);
    rows += ']';
    AddTexts(rows, "labels", objects, &ObjectInfo::label);
    AddTexts(rows, "ids", objects, &ObjectInfo::id);
    AddTexts(rows, "classes", objects, &ObjectInfo::objectClass);
}

}  // namespace

std::uint64_t CallPositions::Next(const Call& call) {
    const std::int64_t moment = (call.hasEnd ? call.end : call.start).nanoseconds;
    last = std::max(last + 1, static_cast<std::uint64_t>(std::max<std::int64_t>(moment, 0)));
    return last;
}

void AddCallRow(std::string& rows, std::string_view host, std::string_view log, std::uint64_t position,
                const Call& call) {
    rows += "{\"host\":";
    AddQuoted(rows, host);
    AddText(rows, "run", call.run);
    fmt::format_to(std::back_inserter(rows), ",\"call\":{},\"version\":{},\"time\":{}", call.number,
                   call.hasEnd ? 2 : 1, std::max<std::int64_t>(call.start.nanoseconds, 0));
    AddText(rows, "function", call.Function());
    if (call.hasEnd) {
        AddNumber(rows, "ns", call.nanoseconds);
        if (call.nanoseconds) AddNumber(rows, "bucket", std::optional(LatencyBucket(*call.nanoseconds)));
        AddText(rows, "result", call.result);
        AddNumber(rows, "rv", call.rv);
    }
    fmt::format_to(std::back_inserter(rows), ",\"pid\":{}", call.process);
    AddNumber(rows, "tid", call.thread);
    AddNumber(rows, "slot", call.fields.slot);
    AddNumber(rows, "session", call.fields.session);
    AddNumber(rows, "object", call.fields.object);
    AddNumber(rows, "user", call.fields.user);
    AddText(rows, "mechanism", call.fields.mechanism);
    AddNumber(rows, "mechanism_number", call.fields.mechanismNumber);
    const std::string_view event = call.hasEnd ? call.endText : call.startText;
    AddText(rows, "inputs", MemberOfEvent(event, "in"));
    AddText(rows, "outputs", MemberOfEvent(event, "out"));
    AddText(rows, "log", log);
    fmt::format_to(std::back_inserter(rows), ",\"position\":{}", position);
    const CallRole role = RoleOf(call.Function());
    AddText(rows, "role", NameOf(role));
    if (IsAsking(call.Function())) rows += ",\"asks\":1";
    AddObjects(rows, role, call);
    if (role == CallRole::kTokenInfo && call.hasEnd && !call.IsError()) {
        const ToldToken token = TokenToldBy(call);
        if (!token.label.empty()) rows += ",\"token\":" + AnyText(token.label);
        if (!token.serial.empty()) rows += ",\"serial\":" + AnyText(token.serial);
    }
    rows += "}\n";
}

}  // namespace ckscribe
