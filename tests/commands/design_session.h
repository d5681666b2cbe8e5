// A session over a small design: inputs /a and /b, the bus /d of /d[0] and /d[1], and /y, which is a and b,
// rising 2 and falling 1 after them.
#pragma once

#include "command_session.h"
#include "kernel/say.h"
#include "support/design_build.h"
#include "support/stimuli.h"

inline const std::string count_error(kol_count_invalid.error);

class design_session : public command_session {
protected:
    void SetUp() override {
        command_session::SetUp();
        build("in a b; bus d 2; and g1 y = a b rise 2 fall 1");
    }
    static void build(std::string_view design) {
        const tm_shell_t recorder = tm_shell;
        tst_build(design);
        tm_shell = recorder;
    }
    // The lines of a refused command.
    static lines refused(const std::string& words, const std::string& error) { return {"# " + words, error}; }
};
