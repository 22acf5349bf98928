#include "tool/findings.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

constexpr std::array<std::string_view, 3> kLevelNames = {"ok", "note", "wrong"};

std::string_view NameOf(Level level) { return kLevelNames[static_cast<std::size_t>(level)]; }

// Returns the mark, padded with spaces to the width of the longest one.
std::string Mark(Level level, const Palette& palette) {
    const std::string_view name = NameOf(level);
    const std::string fill(6 - name.size(), ' ');
    switch (level) {
        case Level::kOk:
            return palette.Good(name) + fill;
        case Level::kNote:
            return palette.Notable(name) + fill;
        case Level::kWrong:
            break;
    }
    return palette.Bad(name) + fill;
}

}  // namespace

void Findings::Add(Level level, std::string_view about, int line, std::string what, std::string remedy) {
    findings_.push_back({level, std::string(about), line, std::move(what), std::move(remedy)});
}

std::size_t Findings::Count(Level level) const {
    return static_cast<std::size_t>(std::ranges::count(findings_, level, &Finding::level));
}

std::string Findings::Text(const Palette& palette) const {
    std::string text;
    for (const Finding& finding : findings_) {
        const std::string line = finding.line == 0 ? "" : fmt::format(", line {}", finding.line);
        text += fmt::format("{}{}{}: {}\n", Mark(finding.level, palette),
                            palette.Name(Harmless(finding.about)), line, Harmless(finding.what));
        if (!finding.remedy.empty()) text += fmt::format("      -> {}\n", Harmless(finding.remedy));
    }
    const std::size_t wrong = Count(Level::kWrong);
    const std::size_t notes = Count(Level::kNote);
    text += fmt::format("{} wrong, {} note{}.\n", wrong, notes, notes == 1 ? "" : "s");
    return text;
}

std::string Findings::Json() const {
    using Json = nlohmann::ordered_json;
    Json all = Json::array();
    for (const Finding& finding : findings_) {
        Json one;
        one["level"] = NameOf(finding.level);
        one["about"] = finding.about;
        if (finding.line != 0) one["line"] = finding.line;
        one["what"] = finding.what;
        one["do"] = finding.remedy;
        all.push_back(std::move(one));
    }
    Json document;
    document["findings"] = std::move(all);
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace ckscribe
