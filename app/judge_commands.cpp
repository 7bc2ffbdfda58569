#include <unistd.h>

#include <iostream>
#include <optional>

#include "cannot_judge.h"
#include "commands.h"
#include "judge.h"
#include "key_file.h"
#include "output.h"
#include "replace_file.h"
#include "report_format.h"

using local_platform::CryptoKey;
using local_platform::DataTree;

namespace {

/// What every judgement needs: the model and the plug-in, loaded once.
struct Judgement {
    explicit Judgement(const JudgeOptions& options)
        : model(options.yang_dir),
          host(options.plugin_file),
          key(options.key_file.empty() ? std::nullopt
                                       : std::optional(read_key_file(options.key_file))) {}

    Report check(const ConfigurationFile& candidate,
                 const std::optional<ConfigurationFile>& running) const {
        Report report;
        report.candidate = candidate.name;
        report.running = running ? running->name : "";
        const Transaction transaction{
            model.read(candidate), running ? model.read(*running) : DataTree(model.schema()), key};
        judge(model, host, transaction, report);
        return report;
    }

    YangModel model;
    local_platform::Host host;
    std::optional<CryptoKey> key;
};

std::string format(const Report& report, const JudgeOptions& options) {
    return options.format == "json" ? format_json(report) : format_text(report, wants_colour());
}

int exit_code(const Report& report, bool accept_warnings) {
    if (report.count(Severity::error) > 0) {
        return kExitErrors;
    }
    return report.findings.empty() || accept_warnings ? kExitClean : kExitWarnings;
}

/// Asks on the terminal; anything but yes is no, and so is the lack of a terminal.
bool confirmed(std::size_t warnings) {
    if (isatty(STDIN_FILENO) != 1) {
        std::cerr << "vrrp-valid: not committed: confirm the warnings with --accept-warnings\n";
        return false;
    }
    std::cerr << "Commit in spite of " << warnings << (warnings == 1 ? " warning" : " warnings")
              << "? [y/N] ";
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

}  // namespace

int run_check(const JudgeOptions& options, const std::string& candidate) {
    const Judgement judgement(options);
    std::optional<ConfigurationFile> running;
    if (!options.running.empty()) {
        running = read_configuration_file(options.running);
    }
    const Report report = judgement.check(read_configuration_file(candidate), running);
    print(format(report, options));
    return exit_code(report, options.accept_warnings);
}

int run_commit(const JudgeOptions& options, const std::string& candidate_name) {
    const Judgement judgement(options);
    const ConfigurationFile candidate = read_configuration_file(candidate_name);
    // Held from before the running configuration is read: the verdict must still hold when it is
    // replaced.
    const FolderLock lock(options.running);
    std::optional<ConfigurationFile> running;
    if (std::optional<std::string> bytes = lock.read_file()) {
        running = configuration_from_bytes(options.running, std::move(*bytes));
    }
    const Report report = judgement.check(candidate, running);
    print(format(report, options));
    int result = exit_code(report, options.accept_warnings);
    if (result == kExitWarnings && confirmed(report.count(Severity::warning))) {
        result = kExitClean;
    }
    if (result == kExitClean) {
        lock.replace_file(candidate.bytes);
    }
    return result;
}
