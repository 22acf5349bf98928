#include <fmt/core.h>
#include <unistd.h>

#include <memory>
#include <string>

#include "tool/check/check_entries.h"
#include "tool/check/check_files.h"
#include "tool/check/check_other_ways.h"
#include "tool/check/check_target.h"
#include "tool/check/check_values.h"
#include "tool/check/other_user.h"
#include "tool/configuration/configuration_place.h"
#include "tool/exit_status.h"
#include "tool/findings.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  ckscribe check --user www-data\n"
    "  WendrafilConfigurationPath=/opt/application ckscribe check\n"
    "  ckscribe check --json | jq '.findings[] | select(.level == \"wrong\")'\n";

// Returns the check without its text in the help.
CLI::Validator Silent(CLI::Validator check) { return check.description(""); }

struct CheckOptions {
    std::string configuration;
    std::string user;
    std::string openSsl;
    std::string nss;
    bool isJson = false;
    TargetCheck target;
};

void CheckEverything(const CheckOptions& options, Findings& findings) {
    const std::string path = ConfigurationPath(options.configuration, &findings);
    const auto text = ReadConfiguration(path, findings);
    Setup setup(path, text.value_or(""));
    if (text) {
        CheckEntries(setup.text, findings);
        CheckValues(setup, findings);
    }
    CheckTarget(setup, options.target, findings);
    if (text) CheckFiles(setup, findings);
    CheckP11Kit(setup, findings);
    if (!options.openSsl.empty()) CheckOpenSsl(setup, options.openSsl, findings);
    if (!options.nss.empty()) CheckNss(setup, options.nss, findings);
}

void Check(const CheckOptions& options, int& status) {
    if (!options.user.empty()) {
        if (const auto problem = BecomeUser(options.user)) throw CLI::ValidationError("--user", *problem);
    }
    Findings findings;
    CheckEverything(options, findings);
    fmt::print("{}", options.isJson ? findings.Json() : findings.Text(Palette::For(STDOUT_FILENO)));
    status = findings.HasWrong() ? kNotWell : kWell;
}

}  // namespace

void AddCheckCommand(CLI::App& app, int& status) {
    CLI::App* const check = app.add_subcommand("check", "Say why a set-up does not work, or that it does");
    const auto options = std::make_shared<CheckOptions>();
    check
        ->add_option("--config", options->configuration,
                     "Look at this configuration file, or at the one in this folder")
        ->type_name("FILE|DIRECTORY")
        ->check(WhyNoPath);
    check->add_option("--user", options->user, "Judge as this user (root only)")->type_name("NAME");
    check->add_flag("--initialize", options->target.initialize,
                    "Also call the target's C_Initialize and C_Finalize");
    check->add_option("--time-limit", options->target.seconds, "How many seconds the target may take to load")
        ->type_name("SECONDS")
        ->check(Silent(CLI::Range(1, 3600)))
        ->capture_default_str();
    check->add_option("--openssl", options->openSsl, "Also look at this openssl.cnf")
        ->type_name("FILE")
        ->check(Silent(CLI::ExistingFile));
    check->add_option("--nss", options->nss, "Also look at the NSS database in this folder")
        ->type_name("DIRECTORY")
        ->check(Silent(CLI::ExistingDirectory));
    check->add_flag("-v,--verbose", options->target.isVerbose, "Name every function that the target lacks");
    check->add_flag("--json", options->isJson, "Print the findings as JSON");
    check->footer(kExamples);
    check->callback([options, &status] { Check(*options, status); });
}

}  // namespace ckscribe
