#include "host/clsQuorvel.h"

#include "host/clases.h"
#include "host/sesion_host.h"

namespace quorvel {

namespace {

class Quorvel final : public SesionHost<clsQuorvel> {
public:
    explicit Quorvel(Servicios s) : SesionHost(std::move(s)) {
        miembros_.agregar_sesion(*this);
        miembros_.agregar({"ShowForm", 0, [this](auto) { return ShowForm(); }, {}, {}});
        miembros_.agregar({"UnloadForm", 0, [this](auto) { return UnloadForm(); }, {}, {}});
    }
    Estado ShowForm() override {
        return intentar([this] {
            pantalla().require_showable(false); // before its session is touched
            entregar_sesion().Show();
        });
    }
};

} // namespace

std::unique_ptr<ObjetoHost> crear_clsQuorvel(Servicios servicios) {
    return std::make_unique<Quorvel>(std::move(servicios));
}

} // namespace quorvel
