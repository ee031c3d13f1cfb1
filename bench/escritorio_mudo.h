#pragma once
#include "platform/report/report.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/escritorio.h"
#include "platform/ui/form.h"
#include "screen/frmQuorvel.h"

#include <cstdio>
#include <cstdlib>

namespace quorvel::bench {

/// Desktop without a person: a modal lookup gets its first row, a message ends the program.
class EscritorioMudo final : public ui::Escritorio {
public:
    void open_with(const std::string&) override {}
    void busy(bool) override {}

protected:
    ui::Answer on_message(const std::string& text, ui::Icon, ui::Buttons, const std::string&) override {
        std::fprintf(stderr, "%s\n", text.c_str());
        std::exit(1);
    }
    std::optional<std::string> on_ask_file(const ui::FileRequest&) override { return std::nullopt; }
    std::vector<std::string> on_ask_files(const ui::FileRequest&) override { return {}; }
    bool on_progress(const std::string&, long, long) override { return true; }
    void on_open(ui::Form&, bool) override {}
    void on_close(ui::Form&) override {}
    void wait(ui::Form& form) override {
        if (auto* lista = dynamic_cast<ui::ctlConsulta*>(form.find("ctlConsulta1"))) lista->pick(0);
    }
};

struct SinImpresora final : ReportPrinter {
    bool run(const ReportJob&) override { return true; }
};

/// Hands the session over; the last property makes the screen load.
inline void preparar(frmQuorvel& f, clsConexion& db, clsConexion& reporte) {
    f.glbUsuario = f.glbEmpresa = 1;
    f.glbN_usuario = "ANA ROJAS", f.glbN_empresa = "Empresa", f.glbPermiso = "11111";
    f.glbPrograma = "Contabilidad";
    f.glbdb = &db, f.glbdbReport = &reporte;
    f.SetglbTipoImpresora("L");
}

} // namespace quorvel::bench
