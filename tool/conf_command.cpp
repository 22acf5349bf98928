#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <string>

#include "tool/configuration/configuration_edit.h"
#include "tool/configuration/configuration_place.h"
#include "tool/configuration/edited_file.h"
#include "tool/configuration/setup.h"
#include "tool/configuration/value_problems.h"
#include "tool/exit_status.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"
#include "tool/nearest_name.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  ckscribe conf list\n"
    "  ckscribe conf get LoggingMask\n"
    "  ckscribe conf set LoggingMask 'SESSION_FUNC|SIGN_VERIFY_FUNC'\n"
    "  ckscribe conf unset LoggingLevel\n"
    "  ckscribe conf --config /etc get 'OrmaSA Client.SendTimeout'\n";

struct ConfOptions {
    std::string configuration;
    std::string key;
    std::string value;
};

struct KeyName {
    std::string section;
    std::string key;

    bool IsOfLibrary() const { return section == CkLogConfig::GetCkLogSectionName(); }
};

// Reads "KEY" or "SECTION.KEY".
KeyName NameIn(const std::string& word) {
    const std::size_t dot = word.rfind('.');
    if (dot == word.npos) return {CkLogConfig::GetCkLogSectionName(), word};
    return {word.substr(0, dot), word.substr(dot + 1)};
}

// Returns the value that counts without the key, or an empty text when there is none.
std::string DefaultOf(std::string_view key) {
    ConfigurationAt nothing("/dev/null/none");
    if (key == "LibUNIX64") return nothing.CkLogLibraryFileName();
    if (key == "File") return nothing.LogFileName();
    if (key == "Error") return nothing.CkLogErrorFile();
    if (key == "Enabled") return std::to_string(nothing.IsLoggingEnabledMordavek());
    if (key == "NewFormat") return std::to_string(nothing.IsNewCkLogFormat());
    if (key == "LoggingMask") return "ALL_FUNC";
    if (key == "Announce") return std::to_string(nothing.IsAnnouncing());
    return "";
}

void SayDefault(const KeyName& name) {
    const std::string missing = name.IsOfLibrary() ? DefaultOf(name.key) : "";
    if (!missing.empty()) {
        Say(fmt::format("{} is not set, and {} counts in its place.", name.key, InQuotes(missing)));
    } else if (name.key == "LoggingLevel" && name.IsOfLibrary()) {
        Say("LoggingLevel is not set, and calls of every level are logged.");
    } else if (name.key == "FileMode" && name.IsOfLibrary()) {
        Say("FileMode is not set, and new files get 0666 less the umask.");
    } else if (name.key == "HideData" && name.IsOfLibrary()) {
        Say("HideData is not set: the log shows data, the events file does not.");
    } else if (name.key == "Events" && name.IsOfLibrary()) {
        Say("Events is not set, and no events are written.");
    } else {
        Say(fmt::format("{} is not set in section {}.", name.key, name.section));
    }
}

// Refuses the command, with the reason on standard error.
int Refuse(const std::string& why) {
    Say(why);
    return kNotWell;
}

// --- The actions

int List(const ConfOptions& options) {
    Findings findings;
    const auto text = ReadConfiguration(ConfigurationPath(options.configuration), findings);
    if (!text) return Refuse(findings.All().back().what);
    const std::string section = options.key.empty() ? CkLogConfig::GetCkLogSectionName() : options.key;
    const auto keys = KeysOf(*text, section);
    for (const auto& [key, value] : keys) fmt::print("{} = {}\n", key, value);
    if (keys.empty()) return Refuse(fmt::format("Section {} has no key that counts.", section));
    return kWell;
}

int Get(const ConfOptions& options) {
    const KeyName name = NameIn(options.key);
    const LoggingKey* const known = name.IsOfLibrary() ? FindLoggingKey(name.key) : nullptr;
    const std::string path = ConfigurationPath(options.configuration);
    const ConfigurationAt settings(path);
    // The buffer has room for as many characters as the library takes, and for the NUL.
    constexpr std::size_t kLongestOfAll = 65535;
    std::string value((known != nullptr ? LongestValue(known->kind) : kLongestOfAll) + 1, '\0');
    if (!settings.GetConfigurationInfo(name.section.c_str(), name.key.c_str(), value.data(),
                                       static_cast<int>(value.size()))) {
        Findings findings;
        if (!ReadConfiguration(path, findings)) Say(findings.All().back().what);
        SayDefault(name);
        return kNotWell;
    }
    fmt::print("{}\n", value.c_str());
    return kWell;
}

// Returns a key of the library whose name, followed by "=", stands in the value, or an empty text for none.
// The value would set that key, too, if it came first in the file, and later edits may change the order.
std::string_view KeyWithin(std::string_view value) {
    for (const LoggingKey& key : kLoggingKeys) {
        for (std::size_t place = value.find(key.name); place != value.npos;
             place = value.find(key.name, place + 1)) {
            const std::size_t sign = value.find_first_not_of(' ', place + key.name.size());
            const bool isAfterBlank = place > 0 && value[place - 1] == ' ';
            if (isAfterBlank && sign != value.npos && value[sign] == '=') return key.name;
        }
    }
    return {};
}

// Returns why the value is not valid for this key of the library, or an empty text when it is valid.
std::string WhyValueIsWrong(const KeyName& name, const std::string& value) {
    if (!name.IsOfLibrary()) return "";
    const LoggingKey* const known = FindLoggingKey(name.key);
    if (known == nullptr) {
        std::vector<std::string_view> names;
        for (const LoggingKey& key : kLoggingKeys) names.push_back(key.name);
        return fmt::format("The library knows no key {}. The nearest one that it knows is {}.",
                           InQuotes(name.key), FindNearestName(name.key, names).name);
    }
    if (value.empty() && (name.key == "LibUNIX64" || name.key == "File")) return "The path is empty.";
    const auto problem = FindValueProblem(*known, value);
    const bool isWord = known->kind == KeyKind::kLevel || known->kind == KeyKind::kNumber;
    if (!problem || (problem->level != Level::kWrong && !isWord)) return "";
    return problem->remedy.empty() ? problem->what : problem->what + " " + problem->remedy;
}

// Reads the copy with the configuration store before it takes the file's place. Returns why it is wrong, or
// an empty text when it is right.
std::string WhyCopyIsWrong(const std::string& path, const KeyName& name, const std::string& value) {
    const ConfigurationAt copy(path);
    std::string read(value.size() + 2, '\0');
    const bool isFound = copy.GetConfigurationInfo(name.section.c_str(), name.key.c_str(), read.data(),
                                                   static_cast<int>(read.size())) != 0;
    if (!isFound || read.c_str() != value)
        return fmt::format("The value reads back as {}.", InQuotes(read.c_str()));
    if (name.IsOfLibrary() && name.key == "FileMode" && copy.FileMode().isRejected)
        return fmt::format("{} is no octal number up to 0777. Write FileMode = 0600;", InQuotes(value));
    return "";
}

int Set(const ConfOptions& options) {
    const KeyName name = NameIn(options.key);
    const std::string wrong = WhyValueIsWrong(name, options.value);
    if (!wrong.empty()) return Refuse(wrong);
    EditedFile file;
    if (const auto problem = file.Open(ConfigurationPath(options.configuration))) return Refuse(*problem);
    const Edit edit = SetKey(file.Text(), name.section, name.key, options.value);
    if (!edit.text) return Refuse(edit.refusal);
    if (const std::string_view key = KeyWithin(options.value); name.IsOfLibrary() && !key.empty())
        return Refuse(
            fmt::format("A value cannot hold \"{} =\": the library finds keys within values.", key));
    if (*edit.text == file.Text()) return kWell;
    if (const auto problem = file.WriteCopy(*edit.text)) return Refuse(*problem);
    const std::string why = WhyCopyIsWrong(file.CopyPath(), name, options.value);
    if (!why.empty()) return Refuse(why);
    if (const auto problem = file.Replace()) return Refuse(*problem);
    return kWell;
}

int Unset(const ConfOptions& options) {
    const KeyName name = NameIn(options.key);
    EditedFile file;
    if (const auto problem = file.Open(ConfigurationPath(options.configuration))) return Refuse(*problem);
    const Edit edit = UnsetKey(file.Text(), name.section, name.key);
    if (!edit.text) return Refuse(edit.refusal);
    if (*edit.text == file.Text()) return kWell;
    if (const auto problem = file.WriteCopy(*edit.text)) return Refuse(*problem);
    if (const auto problem = file.Replace()) return Refuse(*problem);
    return kWell;
}

using Action = int (*)(const ConfOptions&);

CLI::App* AddAction(CLI::App* conf, const char* name, const char* help,
                    const std::shared_ptr<ConfOptions>& options, Action action, int& status) {
    CLI::App* const added = conf->add_subcommand(name, help);
    added->callback([options, action, &status] { status = action(*options); });
    return added;
}

}  // namespace

void AddConfCommand(CLI::App& app, int& status) {
    CLI::App* const conf = app.add_subcommand("conf", "Read and edit the configuration file");
    const auto options = std::make_shared<ConfOptions>();
    conf->add_option("--config", options->configuration, "This configuration file, or the one in this folder")
        ->type_name("FILE|DIRECTORY")
        ->check(WhyNoPath);
    conf->require_subcommand(1);
    conf->footer(kExamples);
    constexpr char kKeyHelp[] = "A key of section CkLog2, or SECTION.KEY";
    CLI::App* const list = AddAction(conf, "list", "Print the keys that count", options, List, status);
    list->add_option("section", options->key, "The section; CkLog2 if none is named");
    CLI::App* const get =
        AddAction(conf, "get", "Print what the library reads for a key", options, Get, status);
    get->add_option("key", options->key, kKeyHelp)->required();
    CLI::App* const set = AddAction(conf, "set", "Give a key a value", options, Set, status);
    set->add_option("key", options->key, kKeyHelp)->required();
    set->add_option("value", options->value, "The value")->required();
    CLI::App* const unset = AddAction(conf, "unset", "Take a key out", options, Unset, status);
    unset->add_option("key", options->key, kKeyHelp)->required();
}

}  // namespace ckscribe
