#pragma once
#include "apoyo/sesion_vigilada.h"
#include "fallas/trabajos.h"

namespace quorvel::fallas {

/// The screen at work behind a watched session.
struct Puesto {
    Puesto(const Escena& e, const std::string& conexion) : p(conexion, e.carpeta, 1) {
        auto vigilada = std::make_unique<apoyo::SesionVigilada>(std::move(p.db));
        sesion = vigilada.get();
        p.db = std::move(vigilada);
        p.abrir();
    }
    void preparar(const Trabajo& t) {
        t.preparar(p);
        (void)p.mensajes();
    }
    /// @return the screen's last notice
    std::string hacer(const Trabajo& t, const apoyo::SesionVigilada::Vigia& vigia) {
        sesion->antes = [&](const std::string& sql) {
            if (sql == "begin") en_riesgo = en_pantalla(p);
            vigia(sql);
        };
        t.hacer(p);
        sesion->antes = [](const std::string&) {};
        p.escritorio.olvidar();
        return ultimo_aviso(p);
    }
    pruebas::Pantalla p;
    apoyo::SesionVigilada* sesion;
    std::string en_riesgo; ///< what the screen held when its last transaction began
};

/// Everything that is stored now.
inline std::string base(const Escena& e) { return huella(*abrir_sesion(e.conexion)); }

} // namespace quorvel::fallas
