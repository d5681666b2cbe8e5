// The options of kolv-batch.
#include "batch/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "foundation/printable.h"
#include "foundation/strings.h"

namespace {

constexpr std::size_t most_arguments = 34;  // directory, range, two files and 30 parameters

void describe(CLI::App& app, bt_options_t& options) {
    app.set_version_flag("--version", "kolv-batch " KOLV_VERSION);
    app.add_option("ARGUMENT", options.arguments,
                   "DIRECTORY [MIn|TYp|MAx] [COMMANDFILE] [DESIGNFILE] [PARAMETER ...]")
        ->required();
    app.add_option("--transcript", options.transcript,
                   "the transcript, in place of DIRECTORY/current_session")
        ->type_name("FILE");
    app.add_flag("--quiet", options.quiet, "show only what is rejected or fails, on standard error");
    app.add_option("--expect-no-difference", options.expected,
                   "fail if the transcript is not the one in FILE")
        ->type_name("FILE");
    app.add_option("--json", options.report, "write end time, events, counts of messages, seconds and memory")
        ->type_name("FILE");
    app.add_option("--limit", options.limit, "errors and warnings that a run goes on with, default 50")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    app.add_flag("--warnings-as-errors", options.warnings_are_errors,
                 "violations, hazards and spikes fail the session, too");
    app.add_flag("--no-shell", options.no_shell, "refuse SYSTEM and '!'; so does KOLV_NO_SHELL=1");
}

bool is_storable(const std::string& text) {
    return text.size() < tm_string_max && std::ranges::all_of(text, tm_is_printable);
}

std::string fault_of(const bt_options_t& options) {
    if (options.arguments.size() > most_arguments) return "more than 30 parameters";
    std::vector<std::string> texts = options.arguments;
    texts.push_back(options.transcript);
    for (const std::string& text : texts)
        if (!is_storable(text)) return "longer than 198 characters, or not printable : " + text;
    return "";
}

}  // namespace

bt_reply_t bt_read_options(std::span<const char* const> words, bt_options_t& options) {
    CLI::App app("Runs a session of the simulator from a command file, without a display.", "kolv-batch");
    describe(app, options);
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::CallForVersion& version) {
        return {std::string(version.what()) + "\n", ""};
    } catch (const CLI::CallForHelp&) {
        return {app.help(), ""};
    } catch (const CLI::ParseError& error) {
        return {"", error.what()};
    }
    return {"", fault_of(options)};
}
