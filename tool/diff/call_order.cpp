#include "tool/diff/call_order.h"

#include <fmt/format.h>

#include "tool/call_line.h"

namespace ckscribe {

namespace {

// Takes off what another run of the same program has otherwise.
void Blur(Value& value, bool isOutput) {
    if (value.kind == "SessionHandle" || value.kind == "ObjectHandle" || value.kind == "Pointer")
        value.number.reset();
    if (value.kind == "ObjectHandleList") {
        // How many there are counts.
        value.number = value.children.size();
        value.children.clear();
        value.isGroup = false;
        return;
    }
    if (value.kind == "Mechanism") {
        for (Value& parameter : value.children) parameter.bytes.reset();
        return;
    }
    if (isOutput) {
        value.bytes.reset();
        value.size.reset();
    }
    for (Value& child : value.children) Blur(child, isOutput);
}

bool IsOfOneRun(const Value& value) {
    return value.kind == "SessionHandle" || value.kind == "ObjectHandle" || value.kind == "Pointer";
}

// Structures tell memory and sessions in use, which no two runs share.
bool IsCompared(const Value& output) {
    return output.kind == "SlotIDList" || output.kind == "MechTypeList" || output.kind == "ObjectHandleList";
}

}  // namespace

std::uint32_t SharedTexts::NumberOf(const std::string& text) {
    const auto [found, isNew] = numbers.try_emplace(text, static_cast<std::uint32_t>(texts.size()));
    if (isNew) texts.push_back(&found->first);
    return found->second;
}

void CallOrder::OnCall(const Call& call) {
    const std::string key = fmt::format("{} {} {}", call.process, call.thread.value_or(0), call.run);
    const auto [place, isNew] = places.try_emplace(key, threads.size());
    if (isNew) threads.push_back({call.process, call.thread, {}});

    std::vector<Value> in = call.In();
    std::erase_if(in, IsOfOneRun);
    for (Value& value : in) Blur(value, false);
    std::string answered = ResultText(call);
    std::vector<Value> out = call.Out();
    std::erase_if(out, [](const Value& value) { return !IsCompared(value); });
    for (Value& value : out) Blur(value, true);
    if (!out.empty()) {
        answered += ' ';
        answered += ValuesText(out);
    }
    threads[place->second].calls.push_back(
        {texts.NumberOf(fmt::format("{}({})", call.Function(), ValuesText(in))), texts.NumberOf(answered),
         call.FirstPlace().line, call.nanoseconds});
}

}  // namespace ckscribe
