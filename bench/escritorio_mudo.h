#pragma once
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/escritorio.h"
#include "platform/ui/form.h"

#include <cstdio>
#include <cstdlib>

namespace quorvel::bench {

/// Desktop without a person: a modal lookup gets its first row, a message ends the program.
class EscritorioMudo final : public ui::Escritorio {
public:
    ui::Answer message(const std::string& text, ui::Icon, ui::Buttons, const std::string&) override {
        std::fprintf(stderr, "%s\n", text.c_str());
        std::exit(1);
    }
    std::optional<std::string> ask_file(const ui::FileRequest&) override { return std::nullopt; }
    void open_with(const std::string&) override {}
    void busy(bool) override {}
    bool progress(const std::string&, long, long) override { return true; }

protected:
    void on_open(ui::Form&, bool) override {}
    void on_close(ui::Form&) override {}
    void wait(ui::Form& form) override {
        if (auto* lista = dynamic_cast<ui::ctlConsulta*>(form.find("ctlConsulta1"))) lista->pick(0);
    }
};

} // namespace quorvel::bench
