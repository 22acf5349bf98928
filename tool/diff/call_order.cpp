#include "tool/diff/call_order.h"

#include <fmt/format.h>

#include <algorithm>

#include "tool/call_line.h"
#include "tool/diff/comparable_call.h"

namespace ckscribe {

namespace {

// Removes values that differ in every run of the same program.
void Blur(Value& value) {
    if (value.kind == "Mechanism") {
        for (Value& parameter : value.children) parameter.bytes.reset();
    }
    if (value.kind == "ObjectHandleList" &&
        !(value.children.size() == 1 && value.children[0].name == "count")) {
        // Only the count of the elements is compared.
        value.number = value.children.size();
        value.children.clear();
        value.isGroup = false;
    }
}

std::string TextWithoutRun(std::vector<Value> values) {
    for (Value& value : values) Blur(value);
    return ValuesText(values);
}

std::vector<ComparedThread> ByProcess(std::vector<ComparedThread> threads) {
    std::vector<ComparedThread> processes;
    for (ComparedThread& thread : threads) {
        const auto found = std::ranges::find(processes, thread.process, &ComparedThread::process);
        if (found == processes.end()) {
            processes.push_back({thread.process, {}, std::move(thread.calls)});
        } else {
            found->calls.insert(found->calls.end(), thread.calls.begin(), thread.calls.end());
        }
    }
    return processes;
}

}  // namespace

std::uint32_t SharedTexts::NumberOf(const std::string& text) {
    const auto [found, isNew] = numbers.try_emplace(text, static_cast<std::uint32_t>(texts.size()));
    if (isNew) texts.push_back(&found->first);
    return found->second;
}

void CallOrder::OnCall(const Call& call) {
    hasThreads = hasThreads && call.thread.has_value();
    const auto [place, isNew] = places.try_emplace({call.process, call.thread}, threads.size());
    if (isNew) threads.push_back({call.process, call.thread, {}});

    const auto compared = [this](const std::string& shown, const Comparable& comparable) {
        return ComparedText{texts.NumberOf(shown), texts.NumberOf(comparable.shape),
                            texts.NumberOf(comparable.facts)};
    };
    std::string answered = ResultText(call);
    if (const std::string lists = TextWithoutRun(ComparedOutputs(call)); !lists.empty())
        answered += fmt::format(" {}", lists);
    threads[place->second].calls.push_back(
        {compared(fmt::format("{}({})", call.Function(), TextWithoutRun(ComparedInputs(call))),
                  ComparableQuestion(call)),
         compared(answered, ComparableAnswer(call)), call.FirstPlace().line, call.nanoseconds});
}

std::vector<ComparedThread> CallOrder::TakeThreads(bool byProcess) {
    std::vector<ComparedThread> taken = std::move(threads);
    threads.clear();
    places.clear();
    if (byProcess) taken = ByProcess(std::move(taken));
    // The calls came in the order of their ends.
    for (ComparedThread& thread : taken) std::ranges::stable_sort(thread.calls, {}, &ComparedCall::line);
    std::ranges::stable_sort(taken, {},
                             [](const ComparedThread& thread) { return thread.calls.front().line; });
    return taken;
}

}  // namespace ckscribe
