// Goal: the public classes as a host uses them. Method: a desktop that plays the user's part.
#include "apoyo/pantalla.h"
#include "host/clsQuorvel.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::pruebas;
using Textos = std::vector<std::string>;

namespace {

struct Anfitrion : Pantalla {
    std::unique_ptr<ObjetoHost> objeto;
    explicit Anfitrion(const char* clase) : objeto(crear_objeto(clase, f.servicios)) {}
    int id(const char* nombre) {
        int n = 0;
        return fallo(objeto->GetIDsOfNames(nombre, n)) ? 0 : n;
    }
    Estado llamar(const char* nombre, const std::vector<Variant>& a = {}) {
        return objeto->Invoke(id(nombre), Llamada::metodo, a, nullptr);
    }
    Estado poner(const char* nombre, const Variant& v) {
        return objeto->Invoke(id(nombre), Llamada::poner, std::vector<Variant>{v}, nullptr);
    }
    Variant leer(const char* nombre) {
        Variant v;
        EXPECT_EQ(objeto->Invoke(id(nombre), Llamada::leer, {}, &v), S_OK) << nombre;
        return v;
    }
    void sesion() {
        EXPECT_EQ(poner("glbdb", db.get()), S_OK);
        EXPECT_EQ(poner("glbdbReport", reporte.get()), S_OK);
        EXPECT_EQ(poner("glbEmpresa", std::int64_t{1}), S_OK);
        EXPECT_EQ(poner("GLBUSUARIO", std::int64_t{1}), S_OK);
        EXPECT_EQ(poner("glbN_usuario", std::string("ANA ROJAS")), S_OK);
        EXPECT_EQ(poner("glbPermiso", std::string("11111")), S_OK);
    }
    frmQuorvel& pantalla() { return objeto->pantalla(); }
    std::string rotulos() {
        return pantalla().lblTotalDebe.Caption() + "|" + pantalla().lblTotalhaber.Caption();
    }
};

} // namespace

TEST(Host, TenLines) {
    Pantalla p;
    const auto objeto = crear_objeto("clsQuorvel", p.f.servicios);
    auto& quorvel_ = dynamic_cast<clsQuorvel&>(*objeto);
    quorvel_.set_glbdb(p.db.get());
    quorvel_.set_glbdbReport(p.reporte.get());
    quorvel_.let_glbEmpresa(1);
    quorvel_.let_glbUsuario(1);
    quorvel_.let_glbPermiso("11111");
    ASSERT_EQ(quorvel_.ShowForm(), S_OK); // returns while the screen is open
    EXPECT_TRUE(objeto->pantalla().visible());
    EXPECT_EQ(quorvel_.UnloadForm(), S_OK);
    EXPECT_FALSE(objeto->pantalla().loaded());
    EXPECT_EQ(crear_objeto("clsOtro", p.f.servicios), nullptr);
}

TEST(Host, RemoteCallerPreparesAVoucherThatTheUserSaves) {
    Anfitrion h("clsquorvelrem");
    h.sesion();
    ASSERT_EQ(h.llamar("LoadForm"), S_OK);
    EXPECT_TRUE(h.pantalla().glbremuneracion);
    EXPECT_FALSE(h.pantalla().visible());
    const auto linea = [&](const char* cuenta, const char* aux, const Variant& debe, const Variant& haber,
                           const std::string& glosa) {
        return h.llamar("grd_agregar", {std::string(cuenta), std::string(aux), debe, haber, glosa});
    };
    using T = std::string;
    EXPECT_EQ(linea("101001", "", T("1000"), T(), "x"), S_OK);
    EXPECT_EQ(h.rotulos(), "1.000|0");
    EXPECT_EQ(linea("101001", "", T("1.500"), T(), std::string(59, 'g') + "ñandú\tx"), S_OK);
    EXPECT_EQ(h.rotulos(), "2.500|0");
    EXPECT_EQ(h.llamar("grd_borrar", {T(), T(), T(), T(), T()}), S_OK);
    EXPECT_EQ(h.rotulos(), "2.500|0") << "the host starts over and the totals stay";
    EXPECT_EQ(h.pantalla().grdDetalle.Rows(), 0);
    EXPECT_EQ(linea("101001", "", T("1.500"), T(), std::string(59, 'g') + "ñandú"), S_OK);
    EXPECT_EQ(linea("301001", "", Variant{}, std::int64_t{1500}, "tab\tulador"), S_OK);
    EXPECT_EQ(h.poner("gstrconcepto", T("Remuneraciones de mayo")), S_OK);

    h.escritorio.al_abrir([&](ui::Form& forma) {
        auto& f = dynamic_cast<frmQuorvel&>(forma);
        EXPECT_EQ(f.cmblibro.Text() + "|" + f.txtconcepto.Text() + "|" + f.mskF_comp.Text(),
                  "CONTABLES|Remuneraciones de mayo|15/06/2024");
        EXPECT_EQ(f.grdDetalle.Rows(), 2) << "building the columns keeps pushed rows";
        EXPECT_EQ(f.grdDetalle.TextMatrix(0, 5), std::string(59, 'g') + "ñ");
        EXPECT_EQ(f.grdDetalle.TextMatrix(1, 5) + f.grdDetalle.TextMatrix(1, 6), "tab ulador");
        f.cmbDocumento.choose(1);
        f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
        EXPECT_EQ(h.mensajes(), Textos{"Comprobante descuadrado"}) << "4.000 against 1.500 on the labels";
        f.RecalcularTotales();
        f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
        EXPECT_EQ(h.llamar("ShowForm"), RPC_E_SERVERCALL_RETRYLATER) << "it is shown already";
        f.glbEmpresa = 2; // a saved voucher stays where it is
        f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
        f.glbEmpresa = 1;
        f.ctlRegistro1.press(ui::ctlRegistro::Function::Exit);
    });
    ASSERT_EQ(h.llamar("ShowForm"), S_OK);
    EXPECT_EQ(h.mensajes(), Textos(2, "Comprobante Ingresado y Mayorizado"));
    EXPECT_EQ(h.sql("select t_debe,t_haber,concepto,bloqueo_usuario from ctcquorvel"),
              "1500|1500|Remuneraciones de mayo|0");
    EXPECT_EQ(
        h.sql("select secuencia,centro,debe_nacional,haber_nacional from ctdquorvel order by secuencia"),
        "1|101001|1500|0;2|301001|0|1500");
    EXPECT_EQ(h.llamar("UnloadForm"), S_OK);
}

TEST(Host, MembersByNameAndWhatTheyRefuse) {
    Anfitrion h("clsQuorvel");
    EXPECT_EQ(h.llamar("ShowForm"), E_FAIL) << "no session yet";
    EXPECT_EQ(h.objeto->descripcion_error(), "Falta la sesión de la base de datos (glbdb)");
    EXPECT_EQ(h.poner("glbdb", std::string("x")), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(h.objeto->descripcion_error(), descripcion(DISP_E_TYPEMISMATCH)) << "of the last call";
    h.sesion();
    EXPECT_EQ(std::get<std::int64_t>(h.leer("glbempresa")), 1);
    EXPECT_EQ(std::get<clsConexion*>(h.leer("glbdb")), h.db.get());
    EXPECT_EQ(h.poner("glbTipoImpresora", std::int64_t{7}), S_OK);
    EXPECT_EQ(std::get<std::string>(h.leer("glbTipoImpresora")), "7");
    int n = 0;
    struct Caso {
        Estado dado, esperado;
        const char* que;
    } const casos[] = {
        {h.objeto->GetIDsOfNames("grd_agregar", n), DISP_E_UNKNOWNNAME, "a member of the other class"},
        {h.poner("glbEmpresa", std::int64_t{40000}), DISP_E_OVERFLOW, "16 bits"},
        {h.poner("glbEmpresa", std::string("uno")), DISP_E_TYPEMISMATCH, "text"},
        {h.poner("glbdb", std::string("x")), DISP_E_TYPEMISMATCH, "no session"},
        {h.llamar("ShowForm", {std::int64_t{1}}), DISP_E_BADPARAMCOUNT, "arguments"},
        {h.poner("ShowForm", std::int64_t{1}), DISP_E_MEMBERNOTFOUND, "a method is no property"},
        {h.objeto->Invoke(99, Llamada::metodo, {}, nullptr), DISP_E_MEMBERNOTFOUND, "number"},
    };
    for (const Caso& c : casos) EXPECT_EQ(c.dado, c.esperado) << c.que;
    EXPECT_EQ(std::get<std::int64_t>(h.leer("glbEmpresa")), 1) << "a refused value changes nothing";

    ASSERT_EQ(h.llamar("ShowForm"), S_OK);
    EXPECT_EQ(h.objeto->descripcion_error(), "");
    const std::pair<const char*, Variant> otras[] = {
        {"glbEmpresa", std::int64_t{2}}, {"glbUsuario", std::int64_t{2}}, {"glbdb", h.reporte.get()}};
    for (const auto& [miembro, otra] : otras) {
        EXPECT_EQ(h.poner(miembro, otra), S_OK);
        EXPECT_EQ(h.llamar("ShowForm"), RPC_E_SERVERCALL_RETRYLATER) << miembro << " of an open screen";
        h.sesion();
    }
    EXPECT_EQ(h.pantalla().glbEmpresa, 1);
    EXPECT_EQ(h.llamar("ShowForm"), S_OK);
    const auto escrito = [&] {
        const frmQuorvel& f = h.pantalla();
        return f.mskF_comp.Text() + f.txtconcepto.Text() + f.txtnro_correlativo.Text() + f.txtnumero.Text();
    };
    const std::string al_abrir = escrito();
    h.pantalla().mskF_comp.SetText("10/03/2024");
    for (ui::TextBox* caja :
         {&h.pantalla().txtconcepto, &h.pantalla().txtnro_correlativo, &h.pantalla().txtnumero})
        caja->SetText("41");
    h.pantalla().close_by_user();
    EXPECT_FALSE(h.pantalla().loaded());
    ASSERT_EQ(h.llamar("ShowForm"), S_OK);
    EXPECT_EQ(escrito(), al_abrir) << "loaded afresh";
    apoyo::ejecutar(*h.db, "drop table ctmcentros");
    EXPECT_EQ(h.llamar("UnloadForm"), S_OK);
    (void)h.llamar("ShowForm"); // reported on the screen, never thrown at the host
    EXPECT_EQ(h.mensajes().size(), 1U);
    h.pantalla().mnucompra.press();
    EXPECT_EQ(h.mensajes().size(), 1U) << "a master that cannot be opened, told again";
    h.escritorio.al_abrir([&](ui::Form&) { h.objeto.reset(); });
    EXPECT_TRUE(h.pantalla().cmdrut_persona.press());
    EXPECT_EQ(h.escritorio.top(), nullptr) << "gone with its list";
}
