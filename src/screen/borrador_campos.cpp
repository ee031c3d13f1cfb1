#include "screen/borrador_campos.h"

#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador_archivo.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel {
namespace {

// In the order in which they are put back: choosing a kind or a book proposes a number, which the draft's own
// then replaces.
constexpr const char* CONTROLES[] = {"mskF_comp",
                                     "cmbDocumento",
                                     "txtNum_doc",
                                     "cmblibro",
                                     "cmbMoneda",
                                     "txtCotizacion",
                                     "txtconcepto",
                                     "cmbdoc_libro",
                                     "txtnum_ref",
                                     "txtfecha_doc",
                                     "txtfecha_pago",
                                     "txtrut_persona",
                                     "txtnombre",
                                     "cmbifrs",
                                     "cmbcodigo_otro_impuesto",
                                     "txttasa_impuesto_otro",
                                     "cmbcodigo_no_recuperable",
                                     "chkactivo_fijo",
                                     "txtiva_activo_fijo",
                                     "chkApertura",
                                     "txtnro_correlativo"};

std::string leer(const ui::Control* c) {
    if (const auto* caja = dynamic_cast<const ui::TextBox*>(c)) return caja->Text();
    if (const auto* lista = dynamic_cast<const ui::ListControl*>(c)) return lista->Text();
    if (const auto* marca = dynamic_cast<const ui::CheckBox*>(c)) return std::to_string(marca->Value());
    return {};
}

void poner(ui::Control* c, const std::string& texto) {
    if (auto* caja = dynamic_cast<ui::TextBox*>(c)) caja->SetText(texto);
    if (auto* lista = dynamic_cast<ui::ListControl*>(c)) elegir_texto(*lista, texto);
    if (auto* marca = dynamic_cast<ui::CheckBox*>(c)) marca->SetValue(texto == "1" ? 1 : 0);
}

/// "1234.5"
Decimal decimal(const std::string& plano) { return Decimal::leer(reemplazar(plano, ".", ",")); }

std::map<std::string, std::string> campos_de_corte(const Comprobante& c) {
    const Comprobante::Cheque cheque = c.cheque.value_or(Comprobante::Cheque{});
    return {{"cortado.subsistema", c.subsistema},
            {"cortado.f_comp", c.f_comp ? fecha_dmy(*c.f_comp) : ""},
            {"cortado.documento", c.documento},
            {"cortado.num_docum", c.num_docum},
            {"cortado.con_cheque", c.cheque ? "1" : "0"},
            {"cortado.cheque", cheque.cheque},
            {"cortado.banco", cheque.banco},
            {"cortado.cuenta", cheque.cuenta},
            {"cortado.beneficiario", cheque.beneficiario},
            {"cortado.fecha", cheque.fecha ? fecha_dmy(*cheque.fecha) : ""},
            {"cortado.nominativo", std::to_string(cheque.nominativo)},
            {"cortado.cruzado", std::to_string(cheque.cruzado)}};
}

struct Lector {
    const std::map<std::string, std::string>& campos;
    std::string operator()(const char* nombre) const {
        const auto i = campos.find(nombre);
        return i == campos.end() ? std::string() : i->second;
    }
};

void reponer_corte(frmQuorvel& f, const Lector& leer) {
    Comprobante c;
    c.empresa = f.glbEmpresa;
    c.subsistema = leer("cortado.subsistema");
    c.f_comp = leer_fecha(leer("cortado.f_comp"));
    c.documento = leer("cortado.documento");
    c.num_docum = leer("cortado.num_docum");
    if (leer("cortado.con_cheque") == "1")
        c.cheque = Comprobante::Cheque{leer("cortado.cheque"),
                                       leer("cortado.banco"),
                                       leer("cortado.cuenta"),
                                       leer("cortado.beneficiario"),
                                       leer_fecha(leer("cortado.fecha")),
                                       static_cast<int>(val_entero(leer("cortado.nominativo"))),
                                       static_cast<int>(val_entero(leer("cortado.cruzado")))};
    f.estado.cortado = std::move(c);
}

/// The files are where they were put; a draft without files leaves the set that is there now.
void reponer_adjuntos(frmQuorvel& f, const Lector& leer) {
    const std::string nombres = leer("adjuntos");
    f.lstadjunto.Clear();
    if (nombres.empty()) return;
    fijar_conjunto(f, leer("conjunto"));
    for (std::size_t i = 0; i < nombres.size();) {
        const std::size_t fin = nombres.find('\n', i);
        f.lstadjunto.AddItem(nombres.substr(i, fin - i));
        i = fin == std::string::npos ? nombres.size() : fin + 1;
    }
}

} // namespace

std::map<std::string, std::string> campos_de_pantalla(const frmQuorvel& f) {
    std::map<std::string, std::string> campos;
    for (const char* const nombre : CONTROLES) campos[nombre] = leer(f.find(nombre));
    const EstadoPantalla& e = f.estado;
    campos["monto_neto"] = e.monto_neto.plano();
    campos["monto_exento"] = e.monto_exento.plano();
    campos["cotizacion_exacta"] = reemplazar(e.cotizacion_exacta.plano(), ".", ",");
    campos["cotizacion_mostrada"] = e.cotizacion_mostrada;
    campos["cierre_generado"] = e.cierre_generado ? "1" : "0";
    campos["total_debe"] = f.lblTotalDebe.Caption();
    campos["total_haber"] = f.lblTotalhaber.Caption();
    campos["conjunto"] = f.gstrcomprobante_adjunto;
    std::string nombres;
    for (const std::string& nombre : entradas(f.lstadjunto))
        nombres += (nombres.empty() ? "" : "\n") + nombre;
    campos["adjuntos"] = nombres;
    const bool guardado = !f.glbBanderaNuevo && e.cargado && e.cargado->f_comp;
    campos["guardado"] = guardado ? "1" : "0";
    campos["guardado.subsistema"] = guardado ? e.cargado->subsistema : "";
    campos["guardado.f_comp"] = guardado ? fecha_dmy(*e.cargado->f_comp) : "";
    campos["guardado.documento"] = guardado ? e.cargado->documento : "";
    campos["guardado.num_docum"] = guardado ? e.cargado->num_docum : "";
    campos["guardado.huella"] = guardado ? e.huella_guardada : "";
    campos["cortado"] = e.cortado ? "1" : "0";
    if (e.cortado) campos.merge(campos_de_corte(*e.cortado));
    return campos;
}

void mostrar_campos(frmQuorvel& f, const std::map<std::string, std::string>& campos) {
    const Lector leer{campos};
    for (const char* const nombre : CONTROLES)
        if (campos.contains(nombre)) poner(f.find(nombre), leer(nombre));
    f.estado.monto_neto = decimal(leer("monto_neto"));
    f.estado.monto_exento = decimal(leer("monto_exento"));
    f.estado.cotizacion_exacta = Decimal::leer(leer("cotizacion_exacta"));
    f.estado.cotizacion_mostrada = leer("cotizacion_mostrada");
    f.estado.cierre_generado = leer("cierre_generado") == "1";
    if (leer("cortado") == "1") reponer_corte(f, leer);
    reponer_adjuntos(f, leer);
}

std::filesystem::path carpeta_borradores(const frmQuorvel& f) { return f.servicios.carpeta / "borradores"; }

std::string grupo_de(const frmQuorvel& f) {
    return grupo_borrador(f.glbdb->Name(), f.glbEmpresa, f.glbUsuario);
}

} // namespace quorvel
