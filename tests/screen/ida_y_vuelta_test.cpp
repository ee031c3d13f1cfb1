// Goal: what a voucher loses on its way through the file, and that it loses nothing else. Method: hostile
// vouchers saved, exported and read again; each row names every field that comes back different.
#include "apoyo/dialogo.h"
#include "screen/abrir.h"
#include "screen/campos.h"

#include <functional>

using namespace quorvel;
using namespace quorvel::pruebas;

namespace {

using Foto = std::vector<std::pair<std::string, std::string>>;

Foto foto(const frmQuorvel& f) {
    Foto campos;
    for (const char* c :
         {"mskF_comp", "cmbDocumento", "txtNum_doc", "cmbMoneda", "lblTotalDebe", "lblTotalhaber",
          "txtconcepto", "cmblibro", "txtrut_persona", "txtnum_ref", "cmbdoc_libro", "txtnombre",
          "txtfecha_doc", "txtfecha_pago", "cmbcodigo_no_recuperable", "cmbcodigo_otro_impuesto",
          "txttasa_impuesto_otro", "cmbifrs"})
        campos.emplace_back(c, apoyo::texto(f, c));
    campos.emplace_back("chkactivo_fijo", std::to_string(f.chkactivo_fijo.Value()));
    campos.emplace_back("chkApertura", std::to_string(f.chkApertura.Value()));
    campos.emplace_back("neto", f.estado.monto_neto.plano());
    campos.emplace_back("exento", f.estado.monto_exento.plano());
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        for (int c = 0; c < f.grdDetalle.Cols(); ++c)
            campos.emplace_back("celda " + std::to_string(i) + "," + std::to_string(c),
                                f.grdDetalle.TextMatrix(i, c));
    return campos;
}
std::string diferencias(const Foto& antes, const Foto& despues) {
    if (antes.size() != despues.size()) return "other rows";
    std::string d;
    for (std::size_t i = 0; i < antes.size(); ++i)
        if (antes[i] != despues[i])
            d +=
                (d.empty() ? "" : "; ") + antes[i].first + ": " + antes[i].second + " > " + despues[i].second;
    return d;
}

void lineas(frmQuorvel& f, const std::vector<std::string>& filas, const char* total) {
    f.grdDetalle.Clear();
    int n = 0;
    for (const std::string& fila : filas) f.grdDetalle.AddItem(std::to_string(++n) + "\t" + fila);
    mostrar_totales(f, {Decimal::leer(total), Decimal::leer(total)});
}
/// A purchase with its tax document.
void compra(frmQuorvel& f, const char* documento, const char* ref) {
    apoyo::elegir(f, "cmblibro", "COMPRAS");
    apoyo::elegir(f, "cmbdoc_libro", documento);
    f.txtrut_persona.SetText("76.418.352-5");
    f.txtnombre.SetText("EL ROBLE");
    f.txtnum_ref.SetText(ref);
    f.txtfecha_doc.SetText("19/03/2024");
    f.estado.monto_neto = 100000;
    lineas(f,
           {"501002\t\t100.000\t0\tcompra\t\t\t\t\t", "109001\t\t19.000\t0\tiva\t\t\t\t\t",
            "201001\t000013\t0\t119.000\tfactura\t\t\t\t\t"},
           "119.000");
}

struct Caso {
    const char* que;
    std::function<void(frmQuorvel&)> cambio;
    const char* diferencia;
};
const Caso CASOS[] = {
    {"plain", [](auto&) {}, ""},
    {"letters of the code page",
     [](auto& f) {
         f.txtconcepto.SetText("Ñandú 5 € “comillas” ‘x’ – 50% \"alto\" 'O''Higgins' \\");
         f.txtnombre.SetText("Peñalolén y Cía. “€” š");
     },
     "txtnombre: Peñalolén y Cía. “€” š > PEÑALOLÉN Y CÍA. “€” Š"},
    {"60 letters",
     [](auto& f) {
         const std::string glosa = [] {
             std::string g;
             for (int i = 0; i < 60; ++i) g += "ñ";
             return g;
         }();
         lineas(f,
                {"101001\t\t1.000\t0\t" + glosa + "\t101001\tS\t77\t024\t31,50",
                 "301001\t\t0\t1.000\t\t\tN\t\t\t"},
                "1.000");
     },
     ""},
    {"auxiliary codes",
     [](auto& f) {
         lineas(f,
                {"103001\t12345678901234567\t600\t0\t\t\t\t\t\t", "103001\t1234\t400\t0\t\t\t\t\t\t",
                 "103001\tAB12\t0\t1.000\t\t\t\t\t\t"},
                "1.000");
     },
     "celda 1,2: 1234 > 001234"},
    {"thirteen digits",
     [](auto& f) {
         lineas(f,
                {"101001\t\t1.234.567.890.123\t0\t\t\t\t\t\t", "301001\t\t\t1.234.567.890.123\t\t\t\t\t\t"},
                "1.234.567.890.123");
     },
     ""},
    {"negative amounts",
     [](auto& f) {
         lineas(f, {"101001\t\t-500\t0\t\t\t\t\t\t", "301001\t\t0\t-500\t\t\t\t\t\t"}, "-500");
     },
     ""},
    {"opening of norm 2",
     [](auto& f) {
         f.chkApertura.SetValue(1);
         apoyo::elegir(f, "cmbifrs", "2 IFRS");
     },
     ""},
    {"another currency", [](auto& f) { apoyo::elegir(f, "cmbMoneda", "US DOLAR"); },
     "cmbMoneda: US DOLAR > PS PESO"},
    {"credit note with other tax",
     [](auto& f) {
         compra(f, "NOTA CREDITO", "AB-12/ñ");
         apoyo::elegir(f, "cmbcodigo_otro_impuesto", "024 LICORES");
         f.txttasa_impuesto_otro.SetText("31,5");
         f.txtfecha_pago.SetText("29/02/2024");
         f.estado.monto_exento = 7;
     },
     "txttasa_impuesto_otro: 31.5 > 31,5"}, // as it is stored, and as a file gives it
    {"fixed asset, not recoverable",
     [](auto& f) {
         compra(f, "FACTURA", "77");
         f.chkactivo_fijo.SetValue(1);
         f.cmbcodigo_no_recuperable.SetListIndex(2);
     },
     ""},
    {"500 lines",
     [](auto& f) {
         std::vector<std::string> filas;
         for (int i = 0; i < 250; ++i) {
             filas.push_back("101001\t\t4\t0\tañejo " + std::to_string(i) + "\t\t\t\t\t");
             filas.push_back("301001\t\t0\t4\t\t\t\t\t\t");
         }
         lineas(f, filas, "1.000");
     },
     ""},
};

} // namespace

TEST(IdaYVuelta, HostileVouchersThereAndBack) {
    Pantalla p;
    p.abrir();
    for (const Caso& c : CASOS) {
        SCOPED_TRACE(c.que);
        p.nuevo();
        p.escribir("mskF_comp", "20/03/2024");
        p.elegir("cmbDocumento", "001 TRASPASO");
        p.elegir("cmblibro", "CONTABLES");
        p.escribir("txtconcepto", "Glosa");
        lineas(p.f, {"101001\t\t1.000\t0\t\t\t\t\t\t", "301001\t\t0\t1.000\t\t\t\t\t\t"}, "1.000");
        c.cambio(p.f);
        p.guardar();
        ASSERT_EQ(p.mensajes(), std::vector<std::string>{"Comprobante Ingresado y Mayorizado"});
        const std::string huella = p.f.estado.huella_guardada;
        ASSERT_TRUE(abrir_comprobante(p.f, p.f.estado.cargado->clave()));
        EXPECT_EQ(p.f.estado.huella_guardada, huella) << "as if somebody had changed it";
        const Foto antes = foto(p.f);
        const std::string archivo = p.carpeta + "/uno.csv";
        p.escritorio.elegir_archivo(archivo);
        p.pulsar("mnuexportar");
        p.nuevo();
        p.escritorio.elegir_archivo(archivo);
        p.pulsar("mnuImportar");
        EXPECT_EQ(p.mensajes(), std::vector<std::string>{"Comprobante exportado al archivo " + archivo});
        EXPECT_EQ(diferencias(antes, foto(p.f)), c.diferencia);
    }
}
