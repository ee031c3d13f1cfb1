#include "demo/demo_maestros.h"

#include "dbtools/base.h"
#include "dbtools/datos.h"
#include "platform/db/literal.h"

#include <algorithm>
#include <stdexcept>

namespace quorvel::demo {
namespace {

using Fila = std::vector<std::string>;

void insertar(dbtools::Base& base, const std::string& destino, const Fila& valores) {
    std::string texto;
    for (const std::string& valor : valores) texto += (texto.empty() ? "" : ",") + sql_texto(valor);
    base.ejecutar("insert into " + destino + " values (" + texto + ")");
}

void sembrar_cuentas(dbtools::Base& base, MaestrosDemo& m) {
    for (const Fila& f : dbtools::leer_tabla("demo/grupos.csv")) {
        insertar(base, f[0] + "(g_cuenta,n_g_cuenta,transitorio,formato_centro,num_nivel,longitud)",
                 {f[1], f[2], f[3], "9.99.999", "3", "6"});
        if (f[0] == "ctmgcuenta") m.transitorio[f[1]] = f[3];
    }
    const auto plan = [&](const std::string& tabla, const std::string& archivo) {
        for (const Fila& f : dbtools::leer_tabla(archivo)) {
            const std::string imputable = f[0].size() == 6 ? "1" : "0"; // titles take no entries
            insertar(base, tabla + "(centro,n_centro,g_cuenta,activo,req_auxiliar)",
                     {f[0], f[1], f[0].substr(0, 1), imputable, f.size() > 2 ? f[2] : "0"});
        }
    };
    plan("ctmcentros", "demo/cuentas.csv");
    plan("ctmcentroc", "demo/centros_costo.csv");
}

void sembrar_auxiliares(dbtools::Base& base, MaestrosDemo& m) {
    int persona = 3; // the first three are the users
    for (const Fila& f : dbtools::leer_tabla("demo/auxiliares.csv")) {
        insertar(base, "ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut)", {f[0], f[3], f[1], "1", f[2]});
        m.auxiliares.push_back({f[0], f[1], f[2], f[3]});
        if (f[1] != "CL") continue;
        insertar(base,
                 "admpersona(persona,n_persona,telefonos,ciudad,provincia,direccion,cedula_ruc,observacion,"
                 "tipo,activo)",
                 {std::to_string(++persona), f[3], "2 2" + std::to_string(4100000 + persona * 7919), f[6],
                  f[5], "CALLE LOS OLMOS " + std::to_string(100 + persona * 37), f[2], f[4], "J", "1"});
    }
}

void sembrar_codigos(dbtools::Base& base, MaestrosDemo& m) {
    for (const Fila& f : dbtools::leer_tabla("demo/codigos.csv")) {
        if (f[0] == "admsubsist") insertar(base, "admsubsist(subsistema,n_subsistema)", {f[1], f[2]});
        if (f[0] == "admmonedas") insertar(base, "admmonedas(moneda,n_moneda)", {f[1], f[2]});
        if (f[0] == "ctmtipoaux")
            insertar(base, "ctmtipoaux(tipo_aux,n_tipo_aux,sistema,activo)", {f[1], f[2], f[3], "1"});
        if (f[0] == "ctmotroimp") {
            insertar(base, "ctmotroimp(otro_impuesto,descripcion,tasa)", {f[1], f[2], f[3]});
            m.tasas[f[1]] = f[3];
        }
        if (f[0] == "admdocumen") {
            insertar(base, "admdocumen(documento,n_documento)", {f[1], f[2]});
            if (!f[3].empty()) insertar(base, "adxdoc_sub(subsistema,documento)", {f[3], f[1]});
            insertar(base, "adxemp_doc(empresa,documento,ultimo_emitido)", {"1", f[1], "0"});
        }
        if (f[0] == "admusuario") {
            insertar(base, "admusuario(usuario,n_usuario,alias,permiso)", {f[1], f[2], f[3], "11111"});
            insertar(base, "admpersona(persona,n_persona,tipo,activo)", {f[1], f[2], "N", "1"});
        }
    }
}

} // namespace

std::vector<AuxiliarDemo> MaestrosDemo::de_tipo(const std::string& tipo) const {
    std::vector<AuxiliarDemo> lista;
    std::copy_if(auxiliares.begin(), auxiliares.end(), std::back_inserter(lista),
                 [&](const AuxiliarDemo& a) { return a.tipo == tipo; });
    return lista;
}

const AuxiliarDemo& MaestrosDemo::auxiliar(const std::string& codigo) const {
    for (const AuxiliarDemo& a : auxiliares)
        if (a.codigo == codigo) return a;
    throw std::runtime_error("Auxiliar desconocido en los datos de demostración: " + codigo);
}

MaestrosDemo sembrar_maestros(dbtools::Base& base) {
    MaestrosDemo m;
    insertar(base, "admempresa(empresa,n_empresa,rut,direccion,giro)",
             {"1", "Comercial Los Aromos Ltda.", "76.854.320-8", "Av. Irarrázaval 2841, Ñuñoa",
              "Venta al por mayor y menor de abarrotes"});
    sembrar_cuentas(base, m);
    sembrar_auxiliares(base, m);
    sembrar_codigos(base, m);
    for (const Fila& f : dbtools::leer_tabla("demo/gastos.csv"))
        m.gastos.push_back({f[0], f[1], f[2], std::stoi(f[3]), std::stoi(f[4]), f[5], std::stoi(f[6]), f[7]});
    return m;
}

} // namespace quorvel::demo
