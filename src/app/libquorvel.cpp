#include "app/sesion_app.h"

#include <QApplication>

// What a host program gets from libquorvel.so: one function, the rest through the object it returns.

namespace {

struct Plataforma {
    quorvel::qt::QtEscritorio escritorio;
    quorvel::RelojSistema reloj;
    quorvel::qt::QtReportPrinter impresor;
};

/// A host opens its own sessions: named here so that the library holds them.
[[gnu::used]] constexpr std::unique_ptr<quorvel::clsConexion> (*SESIONES[])(const std::string&) = {
    quorvel::abrir_sesion, quorvel::abrir_sesion_informes};

} // namespace

/// Creates "clsQuorvel" or "clsQuorvelRem" on windows; nullptr for another name. The caller owns the object
/// and deletes it before its program ends. A program without a QApplication gets one.
extern "C" quorvel::ObjetoHost* quorvel_create(const char* class_name) {
    if (class_name == nullptr) return nullptr;
    if (QCoreApplication::instance() == nullptr) {
        static int argc = 1;
        static char name[] = "quorvel";
        static char* argv[] = {name, nullptr};
        new QApplication(argc,
                         argv); // lives as long as the program: Qt wants none destroyed before its windows
    }
    static Plataforma* const plataforma = new Plataforma;
    try {
        return quorvel::crear_objeto(class_name, {plataforma->escritorio, plataforma->reloj,
                                                  plataforma->impresor, quorvel::dbtools::carpeta_personal()})
            .release();
    } catch (...) {
        return nullptr;
    }
}
