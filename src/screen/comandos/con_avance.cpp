#include "screen/comandos/con_avance.h"

#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"

namespace quorvel {

bool con_avance(frmQuorvel& f, const std::string& que, const std::function<void(const Avance&)>& trabajo) {
    bool sigue = true;
    {
        const Ocupado ocupado(f.escritorio());
        long leidas = 0;
        const Avance avance = [&](long filas, long total) {
            leidas = filas;
            return sigue = sigue && f.escritorio().progress(que, filas, total);
        };
        sigue = interruptible(
                    *f.glbdb, [&] { return avance(leidas, 0); }, [&] { trabajo(avance); }) &&
                sigue;
    }
    if (!sigue) f.informacion(CANCELADA);
    return sigue;
}

} // namespace quorvel
