#include "tool/check/check_values.h"

#include <fmt/core.h>

#include <optional>
#include <string>

#include "config/logging_words.h"
#include "tool/check/function_count.h"
#include "tool/configuration/value_problems.h"
#include "tool/harmless_text.h"
#include "util/without_blanks.h"

namespace ckscribe {

namespace {

void AddProblem(const LoggingKey& key, const Setup& setup, const ValueProblem& problem, Findings& findings) {
    findings.Add(problem.level, key.name, setup.Line(key.name), problem.what, problem.remedy);
}

void TellEnabled(Setup& setup, bool hasProblem, Findings& findings) {
    const int line = setup.Line("Enabled");
    const bool isMissing = line == 0;
    const std::string why = isMissing ? "The key is missing" : "It is 0";
    if (setup.IsLogging()) {
        findings.Add(Level::kOk, "Enabled", line, "The log is written.");
    } else if (setup.HasEvents() && !hasProblem) {
        findings.Add(Level::kOk, "Enabled", line, why + ": events are written, and no log.");
    } else if (!hasProblem) {
        findings.Add(isMissing ? Level::kWrong : Level::kNote, "Enabled", line, why + ": no log is written.",
                     "Write \"Enabled = 1;\" to have one.");
    }
}

void TellMask(Setup& setup, Findings& findings) {
    const int line = setup.Line("LoggingMask");
    const unsigned read = setup.settings.GetLoggingMask();
    const unsigned mask = line == 0 ? unsigned{ALL_FUNC} : read;
    const int level = setup.settings.LoggingLevel();
    const bool isLevelSet = static_cast<std::size_t>(level) <= LoggingLevelWords().size();
    const int logged = LoggedFunctionCount(mask, level);
    findings.Add(
        logged == 0 ? Level::kNote : Level::kOk, "LoggingMask", line,
        fmt::format(
            "The mask is {}{} and logs {} of the {} functions.",
            line == 0 ? "missing (ALL_FUNC)" : fmt::format("{:#x}", mask),
            isLevelSet
                ? ", the level " + std::string(LoggingLevelWords()[static_cast<std::size_t>(level) - 1]) + ","
                : "",
            logged, ExportedFunctionCount()));
}

void TellLevel(Setup& setup, Findings& findings) {
    const int line = setup.Line("LoggingLevel");
    const auto words = LoggingLevelWords();
    const std::size_t level = static_cast<std::size_t>(setup.settings.LoggingLevel());
    if (line == 0 || level > words.size()) return;
    findings.Add(Level::kOk, "LoggingLevel", line, fmt::format("The level is {}.", words[level - 1]));
}

void TellFormat(Setup& setup, Findings& findings) {
    const int line = setup.Line("NewFormat");
    if (line == 0) return;
    findings.Add(Level::kOk, "NewFormat", line,
                 setup.settings.IsNewCkLogFormat() != 0 ? "Records have the new format."
                                                        : "Records have the old format.");
}

void TellHideData(const Setup& setup, Findings& findings) {
    const auto value = setup.Value("HideData");
    if (!value) return;
    const int line = setup.Line("HideData");
    if (setup.settings.HideData() == DataSetting::kShown) {
        findings.Add(Level::kOk, "HideData", line, "Log and events show data.");
    } else if (WithoutBlanks(*value) == "1") {
        findings.Add(Level::kOk, "HideData", line, "Data is hidden in log and events.");
    } else {
        findings.Add(Level::kNote, "HideData", line,
                     fmt::format("{} hides data in log and events, as everything but a plain 0 does.",
                                 InQuotes(*value)),
                     "Write \"HideData = 1;\" to hide data, \"HideData = 0;\" to show it.");
    }
}

void TellFileMode(const Setup& setup, Findings& findings) {
    const int line = setup.Line("FileMode");
    if (line == 0) return;
    const FileModeSetting mode = setup.settings.FileMode();
    if (mode.isRejected) {
        findings.Add(Level::kWrong, "FileMode", line,
                     fmt::format("{} is no octal number up to 0777: new files get 0666 less the umask.",
                                 InQuotes(*setup.Value("FileMode"))),
                     "Write \"FileMode = 0600;\".");
    } else if ((*mode.permissions & 0600) != 0600) {
        findings.Add(Level::kNote, "FileMode", line,
                     fmt::format("New files get the permissions {:04o}: their owner cannot open them again.",
                                 *mode.permissions),
                     "Write \"FileMode = 0600;\".");
    } else {
        findings.Add(Level::kOk, "FileMode", line,
                     fmt::format("New files get the permissions {:04o}.", *mode.permissions));
    }
}

void TellAnnounce(const Setup& setup, Findings& findings) {
    const auto value = setup.Value("Announce");
    if (!value) return;
    const int line = setup.Line("Announce");
    if (setup.settings.IsAnnouncing() == 0) {
        findings.Add(Level::kOk, "Announce", line,
                     "Functions that the target lacks are not announced on standard output.");
    } else if (WithoutBlanks(*value) == "1") {
        findings.Add(Level::kOk, "Announce", line,
                     "Functions that the target lacks are announced on standard output.");
    }
}

}  // namespace

void CheckValues(Setup& setup, Findings& findings) {
    bool isEnabledOdd = false;
    for (const LoggingKey& key : kLoggingKeys) {
        const auto value = setup.Value(key.name);
        if (!value) continue;
        const auto problem = FindValueProblem(key, *value);
        if (!problem) continue;
        AddProblem(key, setup, *problem, findings);
        isEnabledOdd |= key.name == "Enabled";
    }
    TellEnabled(setup, isEnabledOdd, findings);
    TellMask(setup, findings);
    TellLevel(setup, findings);
    TellFormat(setup, findings);
    TellHideData(setup, findings);
    TellFileMode(setup, findings);
    TellAnnounce(setup, findings);
}

}  // namespace ckscribe
