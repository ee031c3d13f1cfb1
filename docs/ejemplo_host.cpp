// A host of Quorvel in ten lines: open the sessions, fill in who works where, show the voucher screen and
// take it away again. ShowForm returns at once: a real host runs its Qt event loop before UnloadForm. When
// that answers E_PENDING, a person had a dialog open, which closes now: it is called again from the event
// loop before the sessions are closed. src/host/objeto_host.h says what each call answers when.
// Build, after ./run:
//   ninja -C build-release quorvel_shared
//   g++ -std=c++20 -Isrc docs/ejemplo_host.cpp -Lbuild-release/bin -lquorvel -o ejemplo_host
// Use:
//   ./run db create sqlite:demo.db --demo
//   LD_LIBRARY_PATH=build-release/bin ./ejemplo_host demo.db print.db
#include "host/clsQuorvel.h"
#include "platform/db/clsConexion.h"

extern "C" quorvel::ObjetoHost* quorvel_create(const char* class_name);

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    const auto db = quorvel::abrir_sesion(std::string("sqlite:") + argv[1]);
    const auto reporte = quorvel::abrir_sesion_informes(argv[2]);
    const std::unique_ptr<quorvel::ObjetoHost> objeto(quorvel_create("clsQuorvel"));
    objeto->let_glbEmpresa(1);
    objeto->let_glbN_empresa("Empresa de ejemplo");
    objeto->let_glbUsuario(1);
    objeto->let_glbPermiso("11111");
    objeto->set_glbdb(db.get());
    objeto->set_glbdbReport(reporte.get());
    auto& pantalla = dynamic_cast<quorvel::clsQuorvel&>(*objeto);
    const bool bien = pantalla.ShowForm() == quorvel::S_OK && pantalla.UnloadForm() == quorvel::S_OK;
    return bien ? 0 : 1;
}
