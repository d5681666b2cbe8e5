// PLOT TRACE and HARDCOPY: files in the schematic directory, and the spool file of the print command.
#include <sys/stat.h>

#include "canvas/plot.h"
#include "design_session.h"

namespace {

class plots : public design_session {
protected:
    void SetUp() override {
        design_session::SetUp();
        tm_vext.nb_arg_comline = 2;
        tm_vext.argcomline[1] = tm_string(folder.string());
        std::filesystem::create_directories(folder);
        std::filesystem::remove_all(tm_plot_spool_file);
        type("trace a y;force a a 1 10;force a b 1 0;run 50");
    }
    void TearDown() override {
        std::filesystem::remove_all(tm_plot_spool_file);
        design_session::TearDown();
    }
    std::string text_of(const std::string& name) const {
        std::ifstream stream(folder / name);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // A print command that keeps what it gets, and how the file was protected.
    void use_print_command() const {
        const std::string program =
            file("bin/lp_quil", "#!/bin/sh\ncp \"$1\" " + (folder / "printed").string() +
                                    "\nstat -c %a \"$1\" > " + (folder / "mode").string() + "\n");
        ::chmod(program.c_str(), 0755);
        const std::string path = (folder / "bin").string() + ":" + std::getenv("PATH");
        setenv("PATH", path.c_str(), 1);
    }
};

TEST_F(plots, take_the_format_from_the_name_of_the_file) {
    const std::string absolute = (folder / "elsewhere.plt").string();
    const struct {
        std::string name, begin;
    } cases[] = {{"trace.plt", "IN;"},
                 {"trace.PNG", "\x89PNG"},
                 {"t.svg", "<?xml"},
                 {"t.Pdf", "%PDF"},
                 {"png", "IN;"}};
    for (const auto& [name, begin] : cases) {
        EXPECT_EQ(type("plot trace " + name), lines{" PLOt TRAce " + name + " "});
        EXPECT_TRUE(text_of(name).starts_with(begin)) << name;
        EXPECT_EQ(type("hardcopy " + name), lines{" HARdcopy " + name + " "});
    }
    EXPECT_EQ(type("plot trace " + absolute).size(), 1U);
    EXPECT_NE(text_of("elsewhere.plt"),
              text_of("trace.plt"));  // the trace; HARDCOPY drew the list over the other
    type("view window trace;hardcopy trace.plt");
    EXPECT_EQ(text_of("elsewhere.plt"), text_of("trace.plt"));
    const std::string nowhere = (folder / "no/such.svg").string();
    EXPECT_EQ(type("plot trace no/such.svg"),
              refused("PLOt TRAce no/such.svg ", "# !! Error : impossible to write : " + nowhere + " "));
}

TEST_F(plots, without_a_name_go_to_the_print_command_in_a_file_of_their_own) {
    use_print_command();
    const std::string other = file("other", "untouched");
    const std::string refusal = "# !! Error : not a plot file of yours : /tmp/kolvplottemp ";
    std::ofstream(tm_plot_spool_file) << "left there";
    EXPECT_EQ(type("plot trace"), lines{" PLOt TRAce "});
    EXPECT_TRUE(text_of("printed").starts_with("IN;"));
    EXPECT_EQ(text_of("mode"), "600\n");
    EXPECT_FALSE(std::filesystem::exists(tm_plot_spool_file));
    EXPECT_EQ(type("hardcopy"), lines{" HARdcopy "});
    std::filesystem::create_symlink(other, tm_plot_spool_file);
    EXPECT_EQ(type("plot trace"), refused("PLOt TRAce ", refusal));
    EXPECT_EQ(text_of("other"), "untouched");
    std::filesystem::remove(tm_plot_spool_file);
    std::filesystem::create_directory(tm_plot_spool_file);
    EXPECT_EQ(type("hardcopy"), refused("HARdcopy ", refusal));
}

}  // namespace
