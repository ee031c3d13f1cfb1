// Goal: a year end that is broken off leaves nothing half done. Method: the connection is cut at each
// statement of the close in turn, before the server gets it or before its answer arrives, and the same
// without a server by a session that fails; each generating command is cancelled at its start and half way.
#include "apoyo/dialogo.h"
#include "apoyo/pg.h"
#include "yearend/cerrar_anio.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

/// A session whose statements from one on fail, some of them or all, though the last may have been done.
class SesionQueFalla : public clsConexion {
public:
    SesionQueFalla(clsConexion& db, int en, bool tras, int cuantas = 1)
        : db_(db), en_(en), hasta_(en + cuantas), tras_(tras) {}
    int sentencias = 0;

    std::unique_ptr<Recordset> NewRecord(const std::string& sql) override {
        if (falla()) throw ErrorSesion("lost", sql);
        return db_.NewRecord(sql);
    }
    int executesql(const std::string& sql) override {
        if (!falla()) return db_.executesql(sql);
        if (tras_) (void)db_.executesql(sql);
        return 0;
    }
    void BeginTrans() override { db_.BeginTrans(); }
    void CommitTrans() override { db_.CommitTrans(); }
    void rollback() override { db_.rollback(); }
    [[nodiscard]] int TypeDB() const override { return db_.TypeDB(); }
    [[nodiscard]] std::string Name() const override { return db_.Name(); }
    [[nodiscard]] std::string last_error() const override { return db_.last_error(); }
    [[nodiscard]] std::int64_t rows_affected() const override { return db_.rows_affected(); }

protected:
    bool falla() { return ++sentencias >= en_ && sentencias < hasta_; }
    clsConexion& db_;
    int en_, hasta_;
    bool tras_;
};

class SesionQueSeCorta final : public SesionQueFalla {
public:
    using SesionQueFalla::SesionQueFalla;
    std::unique_ptr<Recordset> NewRecord(const std::string& sql) override {
        if (++sentencias == en_) pg_cortar_conexiones();
        return db_.NewRecord(sql);
    }
    int executesql(const std::string& sql) override {
        if (++sentencias != en_) return db_.executesql(sql);
        if (!tras_) pg_cortar_conexiones();
        const int hecho = db_.executesql(sql);
        if (!tras_) return hecho;
        pg_cortar_conexiones();
        while (db_.executesql("update ctmconfigu set anio=anio where empresa=0") == 1) {
        } // the session has met the loss, as one that waits for an answer does
        return 0;
    }
};

std::string cerrar(clsConexion& db) {
    try {
        auto r = cerrar_anio_contable(db, 1, HOY);
        if (r.desenlace.mensaje() == FALTA_CIERRE) r = completar_cierre_anio(db, 1, HOY).value_or(r);
        return r.desenlace ? r.mensaje : r.desenlace.mensaje();
    } catch (const ErrorSesion&) {
        return "lost";
    }
}

constexpr const char* CERRADO = "Cierre Anual de 2024 Completado con éxito";

TEST(ServidorPerdido, LaSegundaVezSeCompleta) {
    const auto db = crear_empresa(Motor::postgres);
    ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',"
                  "num_docum_cierre='1',elaborado='Ana'");
    int cortadas = 0;
    for (const bool tras : {false, true})
        for (int en = 1;; ++en) {
            SCOPED_TRACE(std::to_string(en) + (tras ? " answer lost" : " not sent"));
            ejecutar(*db, "delete from ctmconfigu where anio=2025");
            ejecutar(*db, "update adxemp_doc set ultimo_emitido='9'");
            SesionQueSeCorta cortada(*db, en, tras);
            const std::string primera = cerrar(cortada);
            (void)db->executesql("select 1"); // meets the loss if nothing has since
            if (cortada.sentencias < en) break;
            ++cortadas;
            const std::string segunda = cerrar(*db);
            EXPECT_EQ(segunda, primera == CERRADO ? FALTA_CIERRE : CERRADO) << "first: " << primera;
            EXPECT_EQ(filas(*db, "select anio,f_digi_final,iva,elaborado from ctmconfigu where anio>2024"),
                      "2025|2025-12-31|203001|Ana");
            EXPECT_EQ(filas(*db, "select ultimo_emitido from adxemp_doc"), "0;0");
        }
    EXPECT_GE(cortadas, 12);
}

TEST(CierreFallido, LaSegundaVezSeCompleta) {
    const auto db = crear_empresa(Motor::sqlite);
    ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',"
                  "num_docum_cierre='1'");
    const auto letra = [](const std::string& dicho) {
        return dicho == CERRADO ? "done" : dicho == "lost" ? "lost" : dicho.substr(0, 25);
    };
    std::string primeras;
    for (const bool tras : {false, true})
        for (const int cuantas : {1, 2}) {
            for (int en = 1;; ++en) {
                SCOPED_TRACE(std::to_string(en) + " " + std::to_string(cuantas));
                ejecutar(*db, "delete from ctmconfigu where anio=2025");
                SesionQueFalla fallida(*db, en, tras, cuantas);
                const std::string primera = cerrar(fallida);
                if (fallida.sentencias < en) break;
                if (!primeras.ends_with(letra(primera))) primeras += "|" + letra(primera);
                const bool entero = primera == CERRADO && filas(*db, "select documento_cierre from "
                                                                     "ctmconfigu where anio=2025") != "---";
                EXPECT_EQ(cerrar(*db), entero ? FALTA_CIERRE : CERRADO) << "first: " << primera;
            }
            primeras += "\n";
        }
    EXPECT_EQ(primeras, "|lost|Problemas para cerrar el |lost|done\n"
                        "|lost|Problemas para cerrar el |lost|Cierre anual completado, |done\n"
                        "|lost|done|lost|done\n"
                        "|lost|Problemas para cerrar el |lost|Cierre anual completado, |done\n");
}

class Interrumpido : public ::testing::TestWithParam<Motor> {
protected:
    PantallaAbierta p{GetParam()};

    /// A sale to each of many customers: more rows than are read between two reports of the progress.
    void sembrar(int clientes) {
        p.db->BeginTrans();
        for (int i = 1; i <= clientes; ++i) {
            const std::string n = std::to_string(i), clave = "(1,'01',#03/05/2024#,'001','" + n + "',";
            ejecutar(*p.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,num_ref) "
                            "values " +
                                clave + "'" + n + "')");
            for (const auto& [cuenta, debe] : {std::pair("103001", "7"), std::pair("401001", "0")})
                ejecutar(*p.db,
                         "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,"
                         "centro,auxiliar,debe_nacional,haber_nacional) values " +
                             clave + (*debe == '7' ? "1" : "2") + ",'" + cuenta + "','" + n + "'," + debe +
                             "," + (*debe == '7' ? "0" : "7") + ")");
        }
        p.db->CommitTrans();
    }
    std::string todo() {
        std::string t = p.f.mskF_comp.Text() + "|" + p.f.cmbDocumento.Text() + "|" + p.f.txtNum_doc.Text() +
                        "|" + p.f.txtconcepto.Text() + "|" + p.f.cmbifrs.Text() + "|" +
                        p.f.txtnro_correlativo.Text() + "|" + p.totales() + "|" +
                        std::to_string(p.f.chkApertura.Value()) + std::to_string(p.f.glbBanderaNuevo) +
                        std::to_string(p.f.estado.cierre_generado) + "|" + p.f.Caption();
        for (int i = 0; i < p.f.grdDetalle.Rows(); ++i) t += ";" + p.fila(i);
        return t + "#" + p.sql("select count(*),sum(debe_nacional) from ctdquorvel") + "#" +
               p.sql("select anio,f_comp_cierre from ctmconfigu") + "#" +
               p.sql("select documento,ultimo_emitido from adxemp_doc order by documento");
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Interrumpido, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(Interrumpido, CanceladoNoCambiaNada) {
    sembrar(600);
    p.buscar("7");
    p.f.cmbifrs.SetListIndex(1);
    const std::string antes = todo();
    for (const long en : {0L, 500L})
        for (ui::MenuItem* menu : {&p.f.mnuGenerarCierre, &p.f.mnuApertura, &p.f.mnuAperturaDoc}) {
            SCOPED_TRACE(menu->name() + " " + std::to_string(en));
            if (menu != &p.f.mnuGenerarCierre) p.f.mskF_comp.SetText("05/01/2025");
            const std::string previo = todo();
            p.e.responder(ui::Answer::yes);
            p.e.cancelar_avance_en(en);
            menu->press();
            EXPECT_EQ(todo(), previo);
            EXPECT_EQ(p.e.ocupado, 0);
            p.f.mskF_comp.SetText("05/03/2024");
        }
    EXPECT_EQ(todo(), antes);
    p.e.cancelar_avance_en(1000000);
    p.e.responder(ui::Answer::yes);
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(p.f.grdDetalle.Rows(), 601) << "what was cancelled can be run again";
    EXPECT_EQ(p.totales(), "4.200|4.200");
}

} // namespace
