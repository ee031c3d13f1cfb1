// Goal: a company that moves is whole in one place at every moment, and only there to be worked with, whoever
// works beside it and wherever the move is killed. Method: a company with lines, years, invoices and files
// moves between both engines into a database that has a company of its own; processes that move it are ended
// at each step.
#include "apoyo/comprobante.h"
#include "apoyo/proceso.h"
#include "dbtools/directorio.h"
#include "dbtools/estado_empresas.h"
#include "dbtools/filas_empresa.h"
#include "dbtools/linea.h"
#include "dbtools/revisar.h"
#include "dbtools/traslado.h"
#include "oficina/salida.h"
#include "platform/files/attachments.h"
#include "voucher/grabar.h"

#include <chrono>
#include <fstream>
#include <thread>

namespace quorvel::dbtools {
namespace {

namespace fs = std::filesystem;
using apoyo::Motor;
using pruebas::correr;

const AvancePartes CALLADO = [](const std::string&, long, long) {};

std::string guardar(clsConexion& db, const std::string& numero, std::int64_t conjunto = 0,
                    const std::vector<std::string>& adjuntos = {}, const std::string& auxiliar = "000013") {
    Comprobante c = apoyo::compra(numero);
    c.f_comp = apoyo::fecha(2024, 1 + static_cast<unsigned>(std::stoi(numero)) % 3, 20);
    c.comprobante_adjunto = conjunto;
    c.adjuntos = adjuntos;
    c.lineas[2].auxiliar = auxiliar;
    OpcionesGrabar o;
    o.nuevo = true, o.hoy = apoyo::HOY, o.anio = 2024;
    return GrabarComprobante(db, c, o).desenlace.mensaje();
}

/// Two databases that know each other's codes only in part, and a folder of attached files.
struct Mudanza {
    std::string de, a, carpeta = apoyo::carpeta_nueva();
    PedidoTraslado pedido;

    Mudanza(Motor origen, Motor destino)
        : de(apoyo::conexion_empresa(origen)),
          a(apoyo::conexion_empresa(destino)), pedido{de, a, 1, 7, carpeta} {
        const Attachments archivos(carpeta, attachment_database(de)), otros(carpeta, attachment_database(a));
        const auto origen_db = abrir_sesion(de), destino_db = abrir_sesion(a);
        std::ofstream(carpeta + "/factura.txt") << "factura";
        EXPECT_TRUE(archivos.add("3", carpeta + "/factura.txt"));
        EXPECT_EQ(guardar(*origen_db, "1"), "");
        EXPECT_EQ(guardar(*origen_db, "2", 3, {"factura.txt", "perdida.txt"}), "");
        EXPECT_EQ(guardar(*origen_db, "3"), "");
        apoyo::ejecutar(*destino_db, "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
                                     "('000020','OTRO','PR','1','1-9')");
        EXPECT_EQ(guardar(*destino_db, "1", 3, {}, "000020"), "") << "the same number and set there";
        for (const char* sql :
             {"insert into admempresa(empresa,n_empresa,rut) values (2,'Otra','1-9')",
              "insert into ctmsdcenth(empresa,anio,centro,debe3) values (1,2024,'501002',100)",
              "insert into ftcfactura(empresa,factura,cliente,cotización) values (1,10,2,1.25)",
              "update ctcquorvel set concepto='con ''comillas'' y \\ barra', bloqueo_usuario=1 where "
              "num_docum='1'",
              "update ctmconfigu set banco=null where 1=0",
              "update ctcquorvel set nombre=null where num_docum='3'"})
            (void)origen_db->executesql(sql);
        // there the same people have other codes, and the auxiliary is not known
        for (const char* sql :
             {"update ctcquorvel set usuario=5", "update admusuario set usuario=5 where usuario=1",
              "update admpersona set persona=9 where persona=2",
              "delete from ctxaux_cod where auxiliar='000013'"})
            apoyo::ejecutar(*destino_db, sql);
    }
    [[nodiscard]] std::string en(const std::string& conexion, const std::string& sql) const {
        return apoyo::filas(*abrir_sesion(conexion), sql);
    }
    /// What a company has, without the codes that differ from place to place.
    [[nodiscard]] std::string contenido(const std::string& conexion, int empresa) const {
        const std::string n = std::to_string(empresa);
        return en(conexion, "select f_comp,num_docum,concepto,t_debe,nombre,cheque,rut_persona from "
                            "ctcquorvel where empresa=" +
                                n + " order by num_docum") +
               "\n" +
               en(conexion, "select "
                            "num_docum,secuencia,centro,auxiliar,debe_nacional,haber_nacional,tasa_impuesto_"
                            "otro from ctdquorvel where empresa=" +
                                n + " order by num_docum,secuencia") +
               "\n" + en(conexion, "select anio,centro,debe3 from ctmsdcenth where empresa=" + n) +
               en(conexion, "select factura,p.cedula_ruc from ftcfactura, admpersona p where "
                            "p.persona=cliente and empresa=" +
                                n) +
               en(conexion, "select documento,ultimo_emitido from adxemp_doc where empresa=" + n +
                                " order by documento") +
               en(conexion, "select n_usuario from admusuario u, ctcquorvel c where c.usuario=u.usuario and "
                            "c.num_docum='1' and empresa=" +
                                n) +
               en(conexion, "select a.nombre from ctdcomprad a, ctcquorvel c where "
                            "a.comprobante_adjunto=c.comprobante_adjunto and empresa=" +
                                n + " order by a.nombre") +
               en(conexion, "select n_empresa,rut from admempresa where empresa=" + n);
    }
    [[nodiscard]] bool vacio(const std::string& conexion, int empresa) const {
        std::string total;
        for (const char* tabla : {"admempresa", "ctcquorvel", "ctdquorvel", "ctmconfigu", "ctmsdcenth",
                                  "ftcfactura", "adxemp_doc"})
            total += en(conexion, std::string("select count(*) from ") + tabla +
                                      " where empresa=" + std::to_string(empresa));
        return total == "0000000";
    }
};

class Traslados : public testing::TestWithParam<std::pair<Motor, Motor>> {};
INSTANTIATE_TEST_SUITE_P(Motores, Traslados,
                         testing::Values(std::pair{Motor::sqlite, Motor::sqlite},
                                         std::pair{Motor::sqlite, Motor::postgres},
                                         std::pair{Motor::postgres, Motor::sqlite}),
                         [](const auto& m) {
                             return apoyo::nombre(m.param.first) + "_" + apoyo::nombre(m.param.second);
                         });

TEST_P(Traslados, todo_lo_suyo_y_nada_mas) {
    Mudanza m(GetParam().first, GetParam().second);
    const std::string antes = m.contenido(m.de, 1), ajeno = m.contenido(m.a, 1);
    const auto hecho = trasladar(m.pedido, CALLADO);
    EXPECT_EQ(hecho.codigo, 7);
    EXPECT_EQ(hecho.adjuntos, 1U);
    EXPECT_EQ(hecho.faltan.size(), 1U);
    EXPECT_EQ(m.contenido(m.a, 7), antes);
    EXPECT_TRUE(m.vacio(m.de, 1));
    EXPECT_EQ(m.contenido(m.a, 1), ajeno);
    EXPECT_EQ(m.en(m.de, "select n_empresa from admempresa"), "Otra");
    EXPECT_EQ(m.en(m.a, "select count(*) from ctcquorvel where empresa=7 and bloqueo_usuario<>0"), "0");
    const std::string conjunto =
        m.en(m.a, "select comprobante_adjunto from ctcquorvel where empresa=7 and num_docum='2'");
    EXPECT_TRUE(Attachments(m.carpeta, attachment_database(m.a)).find(conjunto, "factura.txt"));
    EXPECT_FALSE(Attachments(m.carpeta, attachment_database(m.de)).find("3", "factura.txt"));
    EXPECT_EQ(revisar(m.de), std::vector<std::string>{});
    EXPECT_EQ(revisar(m.a), std::vector<std::string>{});
    EXPECT_EQ(trasladar(m.pedido, CALLADO).filas, 0) << "once more: it is there already";
    // and back again, under its old number
    (void)trasladar({m.a, m.de, 7, 1, m.carpeta}, CALLADO);
    EXPECT_EQ(m.contenido(m.de, 1), antes);
    EXPECT_TRUE(m.vacio(m.a, 7));
    EXPECT_EQ(guardar(*abrir_sesion(m.de), "4"), "") << "nothing stays closed";
}

TEST_P(Traslados, matado_donde_sea_no_pierde_ni_duplica) {
    Mudanza m(GetParam().first, GetParam().second);
    const std::string antes = m.contenido(m.de, 1);
    int muertes = 0;
    const int paso = GetParam().first == GetParam().second ? 2 : 6;
    for (int n = 1;; n += paso) {
        SCOPED_TRACE(n);
        apoyo::Proceso p([&](int) {
            (void)trasladar(m.pedido, [n, oidas = 0](const std::string&, long, long) mutable {
                if (++oidas == n) apoyo::morir();
            });
        });
        const bool murio = p.esperar().matado;
        const bool aqui = m.en(m.de, "select count(*) from admempresa where empresa=1") == "1",
                   alla = m.en(m.a, "select count(*) from admempresa where empresa=7") == "1";
        EXPECT_FALSE(aqui && alla);
        if (aqui) {
            EXPECT_EQ(m.contenido(m.de, 1), antes);
            EXPECT_NE(guardar(*abrir_sesion(m.de), "5"), "") << "closed for changes";
        }
        if (!murio) break;
        ++muertes;
        if (n % 3 == 0 && aqui) {
            deshacer_traslado(m.pedido);
            EXPECT_TRUE(m.vacio(m.a, 7));
            EXPECT_EQ(guardar(*abrir_sesion(m.de), "5"), "");
            const auto db = abrir_sesion(m.de);
            for (const char* tabla : {"ctcquorvel", "ctdquorvel"})
                apoyo::ejecutar(*db,
                                std::string("delete from ") + tabla + " where empresa=1 and num_docum='5'");
            apoyo::ejecutar(*db, "update adxemp_doc set ultimo_emitido='3' where empresa=1 "
                                 "and documento='002'");
        } else {
            (void)trasladar(m.pedido, CALLADO); // goes on
            EXPECT_EQ(m.contenido(m.a, 7), antes);
            EXPECT_TRUE(m.vacio(m.de, 1));
            EXPECT_EQ(revisar(m.a), std::vector<std::string>{});
            (void)trasladar({m.a, m.de, 7, 1, m.carpeta}, CALLADO);
            EXPECT_EQ(m.contenido(m.de, 1), antes);
        }
    }
    EXPECT_GT(muertes, 20 / paso);
}

TEST(Traslado, mientras_otros_graban) {
    Mudanza m(Motor::sqlite, Motor::sqlite);
    apoyo::Proceso otro([&](int) {
        const auto db = abrir_sesion(m.a);
        for (int n = 100; n < 1000; ++n)
            if (guardar(*db, std::to_string(n),
                        1 + std::stoi(apoyo::filas(
                                *db, "select coalesce(max(comprobante_adjunto),0) from ctcquorvel")),
                        {}, "000020") != "")
                return;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    (void)trasladar(m.pedido, CALLADO);
    otro.matar();
    EXPECT_EQ(revisar(m.a), std::vector<std::string>{}) << "no attachment set twice";
    EXPECT_GT(std::stoi(m.en(m.a, "select count(*) from ctcquorvel where empresa=1")), 1);
}

TEST(Traslado, lo_que_choca_se_dice_y_nada_cambia) {
    Mudanza m(Motor::sqlite, Motor::sqlite);
    const auto db = abrir_sesion(m.a);
    apoyo::ejecutar(*db, "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
                         "('000013','OTRO','PR','1','1-9')");
    apoyo::ejecutar(*db, "update admdocumen set n_documento='VENTA' where documento='002'");
    const std::string orden =
        "db move 1 " + m.de.substr(7) + " " + m.a.substr(7) + " --adjuntos " + m.carpeta;
    EXPECT_EQ(correr(orden).error, "Ya hay una empresa 1 en el destino; --codigo le da otro\n");
    const auto corrida = correr(orden + " --codigo 7");
    EXPECT_EQ(corrida.codigo, oficina::SIN_DATOS);
    EXPECT_EQ(corrida.error, "El auxiliar 000013 es otro en el destino: 76.418.352-5 aquí, 1-9 allá\n"
                             "El tipo de documento 002 es otro en el destino: COMPRA aquí, VENTA allá\n");
    EXPECT_EQ(guardar(*abrir_sesion(m.de), "8"), "");
    apoyo::ejecutar(*db, "update admdocumen set n_documento='COMPRA' where documento='002'");
    apoyo::ejecutar(*db, "delete from ctxaux_cod where auxiliar='000013'");
    EXPECT_NE(correr("db move 9 " + m.de.substr(7) + " " + m.a.substr(7)).codigo, 0);
    const std::string directorio = apoyo::carpeta_nueva() + "/dir.db";
    EXPECT_EQ(correr("db create " + directorio).codigo, 0);
    const auto bien = correr(orden + " --codigo 7 --directorio " + directorio);
    EXPECT_EQ(bien.codigo, 0) << bien.error;
    EXPECT_EQ(correr("db find " + directorio + " prue").texto,
              "1\t76.111.222-8\tEmpresa de Prueba Ltda.\t" + m.a +
                  "\n7\t76.111.222-8\tEmpresa de Prueba Ltda.\t" + m.a + "\n");
    EXPECT_EQ(correr("db find " + directorio + " 761").texto,
              correr("db find " + directorio + " 76.111.222-8").texto);
    EXPECT_EQ(correr("db find " + directorio + " mpre").codigo, oficina::RECHAZADO);
    const auto lista = correr("db companies /no/hay.db --directorio " + directorio);
    EXPECT_EQ(lista.codigo, oficina::RECHAZADO);
    EXPECT_NE(lista.texto.find("7\t76.111.222-8\tEmpresa de Prueba Ltda.\t0\t3\t15/06/2024\t" + m.a),
              std::string::npos)
        << lista.texto;
    apoyo::ejecutar(*db,
                    "update ctdquorvel set debe_nacional=debe_nacional+1 where empresa=7 and num_docum='8'");
    apoyo::ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024# where empresa=7");
    const EstadoEmpresa estado = estado_de_empresas(m.a).at(1);
    EXPECT_GT(estado.descuadrados, 0);
    EXPECT_EQ(estado.meses_abiertos, 0);
}

} // namespace
} // namespace quorvel::dbtools
