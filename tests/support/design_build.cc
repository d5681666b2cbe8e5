#include "support/design_build.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "foundation/context.h"
#include "kernel/clear.h"
#include "kernel/model.h"
#include "kernel/say.h"
#include "kernel/setup.h"
#include "models/model_table.h"
#include "netlist/design_file.h"
#include "support/session.h"

namespace {

namespace fs = std::filesystem;

template <typename Record>
Record& record_of(std::string_view name, std::int32_t count, Record* (*ptrto)(std::int32_t)) {
    const std::string path = name.starts_with('/') ? std::string(name) : '/' + std::string(name);
    for (std::int32_t i = 1; i <= count; ++i)
        if (kol_path(ptrto(i)->sim_path) == path) return *ptrto(i);
    std::fprintf(stderr, "no record %s\n", path.c_str());
    std::abort();
}

}  // namespace

void tst_load(const yx_design_image_t& image) {
    kol_context_clear();
    yx_store_clear();
    tm_vext = {};
    tst_record_session();
    std::string directory = testing::TempDir() + "kolv_design_XXXXXX", why;
    if (yxw_write(image, std::string(mkdtemp(directory.data())) + "/design_yx", why))
        tst_read(directory);
    else
        ADD_FAILURE() << why;
    fs::remove_all(directory);
}

void tst_read(const fs::path& directory) {
    const fs::path before = fs::current_path();
    fs::current_path(directory);  // the store's debug file goes there
    yxi_text_t where, file;
    yxi_copy_const(".", where);
    yxi_copy_const("design_yx", file);
    STATUS_T status;
    yxi_init_dfi(where, file, status);
    EXPECT_EQ(status.all, 0) << "the design does not load";
    fs::current_path(before);
}

void tst_set_up() {
    kol_set_models(kol_model_table());
    kol_ext.cur_sim_path = tm_string("/");
    kol_init_object_ptr();
}

void tst_build(std::string_view text) {
    std::string error;
    const yx_design_image_t image = tst_design(text, error);
    if (!error.empty()) ADD_FAILURE() << error;
    tst_load(image);
    tst_set_up();
}

yx_net_record_t& tst_net(std::string_view name) {
    return record_of(name, yx_sext.max_net_cur, yx_ptrto_net_rec);
}

yx_pin_record_t& tst_pin(std::string_view path) {
    return record_of(path, yx_sext.max_pin_cur, yx_ptrto_pin_rec);
}
