// Goal: bad surroundings and hostile input leave one message and lose nothing. Method: the screen worked by
// keys while databases, folders and texts misbehave.
#include "apoyo/pantalla.h"
#include "apoyo/sesion_vigilada.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::pruebas;
using apoyo::Motor;
using Textos = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

void engordar_maestros(clsConexion& db, int n) {
    const char* const SENTENCIAS[] = {
        "insert into ctmcentros(centro,n_centro,g_cuenta,activo) values ('9%','C',1,'1')",
        "insert into ctmcentroc(centro,n_centro,g_cuenta,activo) values ('9%','C',1,'1')",
        "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo) values ('9%','A','CL','1')",
        "insert into admpersona(persona,n_persona) values (9%,'P')",
        "insert into admmonedas(moneda,n_moneda) values ('9%','M')",
        "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('9%','O',1)",
        "insert into admdocumen(documento,n_documento) values ('9%','D')",
        "insert into adxdoc_sub(subsistema,documento) values ('01','9%')",
    };
    db.BeginTrans();
    for (int i = 0; i < n; ++i)
        for (const char* sql : SENTENCIAS)
            apoyo::ejecutar(db, reemplazar(sql, "%", std::to_string(10000 + i)));
    db.CommitTrans();
}

} // namespace

TEST(Bordes, OpeningTheScreenCostsTheSameWithLargeMasters) {
    int antes = 0;
    for (const int n : {0, 700}) {
        Pantalla p;
        engordar_maestros(*p.db, n);
        int sentencias = 0;
        apoyo::SesionVigilada contada(abrir_sesion(p.conexion));
        contada.antes = [&](const std::string&) { ++sentencias; };
        p.f.glbdb = &contada;
        p.f.glbdbReport = p.reporte.get();
        p.f.glbEmpresa = 1;
        p.f.glbPermiso = "11111";
        p.f.SetglbTipoImpresora("L");
        p.f.Show();
        EXPECT_EQ(p.mensajes(), Textos{});
        EXPECT_EQ(p.f.cmbDocumento.ListCount(), 3 + n);
        EXPECT_EQ(sentencias, n == 0 ? sentencias : antes);
        antes = sentencias;
        EXPECT_LE(antes, 40);
        p.f.Unload();
        p.f.glbdb = p.db.get();
    }
}

TEST(Bordes, ALockedDatabaseKeepsTheVoucherOnTheScreen) {
    Pantalla p;
    p.abrir();
    p.comprobante("1000");
    const auto otro = abrir_sesion(p.conexion);
    otro->BeginTrans();
    apoyo::ejecutar(*otro, "update admsubsist set n_subsistema='X'");
    p.guardar();
    const auto m = p.mensajes();
    ASSERT_EQ(m.size(), 1U);
    EXPECT_NE(m[0].find("está bloqueada"), std::string::npos) << m[0];
    EXPECT_TRUE(p.f.glbBanderaNuevo);
    otro->rollback();
    EXPECT_EQ(p.sql("select count(*) from ctcquorvel"), "0");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
}

TEST(Bordes, ADatabaseWithoutTablesIsToldOnce) {
    Pantalla p;
    const auto vacia = apoyo::sesion_nueva(Motor::sqlite);
    p.f.glbdb = vacia.get();
    p.f.glbEmpresa = 1;
    p.f.glbPermiso = "11111";
    p.f.SetglbTipoImpresora("L");
    p.f.Show();
    EXPECT_EQ(p.mensajes(), Textos{"La base de datos " + vacia->Name() + " no tiene la tabla ctmconfigu"});
    p.f.Unload();
    EXPECT_EQ(p.mensajes(), Textos{});
}

TEST(Bordes, FoldersThatCannotBeWritten) {
    Pantalla p;
    std::ofstream(p.carpeta + "/nivo.ini") << "[nivo]\nbase=" << p.carpeta << "/archivo/\n";
    std::ofstream(p.carpeta + "/archivo") << "no es carpeta";
    std::ofstream(p.carpeta + "/f.pdf") << "uno";
    p.abrir();
    p.escritorio.elegir_archivo(p.carpeta + "/f.pdf");
    p.pulsar("cmdadjunto_agregar");
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 0) << "no entry without its file";
    fs::create_directories(p.carpeta + "/NIVO.ini.nuevo"); // the settings cannot be replaced
    fs::create_directories(p.carpeta + "/nivo.ini.nuevo");
    std::ofstream(p.carpeta + "/borradores") << "no es carpeta";
    p.comprobante("1000");
    p.nuevo();
    p.comprobante("1000");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    p.f.Unload();
    EXPECT_EQ(p.mensajes(), Textos{});
    std::ifstream ini(p.carpeta + "/nivo.ini");
    std::string linea;
    std::getline(ini, linea);
    EXPECT_EQ(linea, "[nivo]");
}
