// SAVE SESSION and RESTORE SESSION: everything that decides what happens next, in one file.
//
// The file is an archive: title, version, fingerprint of the design, hash of the contents, contents.
#include "commands/files/file_path.h"
#include "commands/files/handlers.h"
#include "commands/observation/observation_archive.h"
#include "commands/values/checks.h"
#include "commands/values/handlers.h"
#include "foundation/context.h"
#include "foundation/replacement.h"
#include "foundation/shell.h"
#include "kernel/checkpoint.h"
#include "results/entries/time_cursor.h"
#include "schematic/whole_file.h"

namespace {

constexpr kol_rejection_t no_session{"# !! Error : the file is no SESSION or damaged ? "};
constexpr kol_rejection_t other_version{"# !! Error : the SESSION is of another version ? "};
constexpr kol_rejection_t other_design{"# !! Error : the SESSION is of another design ? "};

constexpr std::string_view title = "##KOLV_SESSION##\n";
constexpr std::uint32_t version = 1;

struct session_file_t {
    std::string title;
    std::uint32_t version = 0;
    std::uint64_t design = 0, hash = 0;
    std::string contents;

    void archive(tm_archive_t& archive) { archive(title, version, design, hash, contents); }
};

void archive_views(tm_archive_t& archive) {
    kol_defref_var_rec_t& e = kol_ext;
    archive(e.signal_position, e.list_or_trace, e.list_cur_time, e.list_cur_column, e.list_period,
            e.list_base_time, e.list_state_on, e.list_change_on, e.trace_cur_time, e.trace_cur_row,
            e.trace_scale, e.trace_period, e.trace_period_on);
    for (rs_time_cursor_t* cursor : {&rs_cursors.first, &rs_cursors.second})
        archive(cursor->is_set, cursor->time);
    archive(rs_cursors.probes_follow);
}

void archive_settings(tm_archive_t& archive) {
    tm_defref_var_rec_t& v = tm_vext;
    archive(kol_ext.top_var, v.num_errors, v.num_warnings, v.transcript_state, v.snap_on, v.smash_on,
            v.grid_on);
    archive(v.action_f, v.action_fs, v.action_fc, v.action_fa, v.action_fup, v.action_fsup, v.action_fcup,
            v.action_faup, v.action_a, v.action_as, v.action_ac, v.action_aa, v.action_but, v.action_ck);
}

void archive_contents(tm_archive_t& archive) {
    kol_archive_run(archive);
    kol_archive_observation(archive);
    kol_archive_histories(archive);
    kol_archive_checks(archive);
    archive_views(archive);
    archive_settings(archive);
}

kol_result_t failed(const kol_rejection_t& why, const tm_string_record_t& path) {
    return kol_result_t(why).then({" !! \"", tm_view(path), "\" "});
}

kol_rejection_t read(const tm_string_record_t& path, session_file_t& session) {
    std::string bytes;
    if (!tm_read_whole(path, bytes, kol_value_file_max)) return kol_cannot_open;
    tm_archive_t file(bytes);
    session.archive(file);
    if (session.title != title) return no_session;
    if (session.version != version) return other_version;
    if (!file.is_sound() || !file.is_at_end() || session.hash != tm_hash(session.contents)) return no_session;
    return session.design == kol_design_fingerprint() ? kol_rejection_t{} : other_design;
}

}  // namespace

kol_result_t kol_save_session_cmd(const kol_line_t& line) {
    tm_archive_t contents, file;
    archive_contents(contents);
    session_file_t session{std::string(title), version, kol_design_fingerprint(), tm_hash(contents.bytes()),
                           contents.bytes()};
    session.archive(file);
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    if (tm_replacement(path).write(file.bytes())) return {};
    tm_count_error();
    return failed(kol_cannot_open, path);
}

kol_result_t kol_restore_session_cmd(const kol_line_t& line) {
    const tm_string_record_t path = kol_file_path(tm_view(line[3]));
    session_file_t session;
    if (const kol_rejection_t wrong = read(path, session)) return failed(wrong, path);
    tm_archive_t contents(session.contents);
    archive_contents(contents);
    tm_shell.redraw_states();
    return contents.is_sound() && contents.is_at_end() ? kol_result_t() : failed(no_session, path);
}
