#include "registro/dte.h"

#include "assistants/libros.h"
#include "platform/files/codepage.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"

#include <algorithm>
#include <cmath>
#include <pugixml.hpp>

namespace quorvel::registro {
namespace {

constexpr int HONDURA = 40; // the official schema needs a dozen

std::string_view sin_marca(std::string_view bytes) {
    constexpr std::string_view MARCA = "\xEF\xBB\xBF";
    if (bytes.starts_with(MARCA)) bytes.remove_prefix(MARCA.size());
    return bytes.substr(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
}

/// A name without the prefix of its namespace.
std::string_view local(std::string_view nombre) { return nombre.substr(nombre.find(':') + 1); }

/// Goes from tag to tag. @return name of the outermost element @throws ErrorRegistro
std::string_view revisar_estructura(std::string_view t, bool entera) {
    std::string_view raiz;
    int hondura = 0;
    for (std::size_t i = 0; (i = t.find('<', i)) != std::string_view::npos;) {
        const auto saltar = [&](std::string_view fin) {
            const std::size_t f = t.find(fin, i);
            i = f == std::string_view::npos ? t.size() : f + fin.size();
        };
        const std::string_view resto = t.substr(i);
        if (resto.starts_with("<!--"))
            saltar("-->");
        else if (resto.starts_with("<![CDATA["))
            saltar("]]>");
        else if (resto.starts_with("<?"))
            saltar("?>");
        else if (resto.starts_with("<!"))
            throw ErrorRegistro("El XML trae definiciones propias (DOCTYPE o entidades): no se lee");
        else {
            const std::size_t inicio = i;
            saltar(">");
            const bool cierra = resto.starts_with("</"), solo = i >= 2 && t[i - 2] == '/';
            if (raiz.empty()) raiz = resto.substr(1, resto.find_first_of(" \t\r\n/>") - 1);
            if (!entera) return local(raiz);
            if (cierra)
                --hondura;
            else if (!solo && ++hondura > HONDURA)
                throw ErrorRegistro("El XML tiene demasiados niveles, byte " + std::to_string(inicio));
        }
    }
    return local(raiz);
}

bool raiz_conocida(std::string_view raiz) { return raiz == "DTE" || raiz == "EnvioDTE" || raiz == "SetDTE"; }

std::string en_utf8(std::string_view bytes) {
    if (bytes.find('\0') != std::string_view::npos)
        throw ErrorRegistro("El XML está en una codificación que no se lee (UTF-16)");
    if (es_utf8(bytes)) return std::string(bytes);
    Converted leido = Codepage().from_windows1252(bytes);
    if (leido.bad) throw ErrorRegistro("El XML tiene letras dañadas, byte " + std::to_string(*leido.bad));
    return std::move(leido.text);
}

pugi::xml_node hijo(const pugi::xml_node& padre, std::string_view nombre) {
    for (const pugi::xml_node& n : padre.children())
        if (local(n.name()) == nombre) return n;
    return {};
}

std::string valor(const pugi::xml_node& padre, std::string_view nombre) {
    return sin_controles(recortar(hijo(padre, nombre).text().get()));
}

/// Reads one document; the first thing that is wrong with it is its problem.
class LectorDte {
public:
    LectorDte(const pugi::xml_node& documento, const std::string& rut_empresa)
        : encabezado_(hijo(documento, "Encabezado")), empresa_(rut_empresa) {}

    Documento leer() {
        const pugi::xml_node id = hijo(encabezado_, "IdDoc"), totales = hijo(encabezado_, "Totales");
        d_.tipo = valor(id, "TipoDTE");
        d_.folio = folio_limpio(valor(id, "Folio"));
        d_.fecha = leer_fecha_iso(valor(id, "FchEmis"));
        partes();
        leer_totales(totales);
        if (!encabezado_) falla("Al documento le falta el encabezado");
        if (d_.tipo.empty() || d_.folio.empty()) falla("El documento no dice su tipo o su folio");
        if (!d_.fecha) falla("La fecha de emisión no es una fecha");
        return d_;
    }

private:
    void falla(const std::string& que) {
        if (d_.problema.empty()) d_.problema = que;
    }

    std::string rut(std::string_view parte, std::string_view nombre) {
        const std::string escrito = valor(hijo(encabezado_, parte), nombre);
        const ResultadoRut r = validarut(con_guion(escrito));
        if (!r.valido || escrito.empty())
            falla(std::string(nombre) + ": el RUT no es válido (" + primeros(escrito, 20) + ")");
        return r.valido ? r.texto : escrito;
    }

    /// A purchase invoice is issued by the buyer.
    void partes() {
        const std::string emisor = rut("Emisor", "RUTEmisor"), receptor = rut("Receptor", "RUTRecep");
        const bool del_comprador = d_.tipo == "45" || d_.tipo == "46";
        const bool emitido = emisor == empresa_;
        if (!emitido && receptor != empresa_)
            falla("El documento no es de esta empresa (" + empresa_ + "): lo emitió " + emisor + " para " +
                  receptor);
        d_.libro = emitido != del_comprador ? VENTAS : COMPRAS;
        d_.rut = emitido ? receptor : emisor;
        d_.nombre = emitido ? valor(hijo(encabezado_, "Receptor"), "RznSocRecep") : nombre_emisor();
    }

    std::string nombre_emisor() {
        const pugi::xml_node emisor = hijo(encabezado_, "Emisor");
        const std::string nombre = valor(emisor, "RznSoc");
        return nombre.empty() ? valor(emisor, "RznSocEmisor") : nombre;
    }

    std::int64_t monto(const pugi::xml_node& n, std::string_view nombre) {
        const std::string v = valor(n, nombre);
        if (v.empty()) return 0;
        const bool digitos = std::ranges::all_of(v, [](char c) { return c >= '0' && c <= '9'; });
        if (digitos && v.size() <= CIFRAS_MONTO) return val_entero(v);
        falla(std::string(nombre) + ": \"" + primeros(v, 30) + "\" no es un monto en pesos");
        return 0;
    }

    void leer_impuesto(const pugi::xml_node& n) {
        const std::int64_t m = monto(n, "MontoImp");
        if (m == 0) return;
        if (d_.otros.size() == IMPUESTOS_DOCUMENTO) return falla("El documento tiene demasiados impuestos");
        d_.otros.push_back({valor(n, "TipoImp"), m, valor(n, "TasaImp")});
    }

    void leer_totales(const pugi::xml_node& totales) {
        d_.neto = monto(totales, "MntNeto");
        d_.exento = monto(totales, "MntExe");
        d_.iva = monto(totales, "IVA");
        d_.total = monto(totales, "MntTotal");
        for (const pugi::xml_node& n : totales.children())
            if (local(n.name()) == "ImptoReten") leer_impuesto(n);
        const double tasa = valnumerobase(valor(totales, "TasaIVA"));
        if (tasa > 0 &&
            std::fabs(static_cast<double>(d_.neto) * tasa / 100 - static_cast<double>(d_.iva)) > 1)
            falla("El IVA no es el " + valor(totales, "TasaIVA") + " % del neto");
    }

    pugi::xml_node encabezado_;
    const std::string& empresa_;
    Documento d_;
};

bool es_cuerpo(std::string_view nombre) {
    return nombre == "Documento" || nombre == "Liquidacion" || nombre == "Exportaciones";
}

void recorrer(const pugi::xml_node& padre, const std::string& rut_empresa,
              std::vector<Documento>& documentos) {
    for (const pugi::xml_node& n : padre.children()) {
        const std::string_view nombre = local(n.name());
        if (es_cuerpo(nombre)) {
            if (documentos.size() == DOCUMENTOS_ARCHIVO) throw ErrorRegistro(DEMASIADOS_DOCUMENTOS);
            documentos.push_back(LectorDte(n, rut_empresa).leer());
        } else if (raiz_conocida(nombre))
            recorrer(n, rut_empresa, documentos);
    }
}

} // namespace

bool es_xml(std::string_view bytes) { return sin_marca(bytes).starts_with('<'); }

bool es_documento_electronico(std::string_view bytes) {
    try {
        return es_xml(bytes) && raiz_conocida(revisar_estructura(bytes, false));
    } catch (const ErrorRegistro&) {
        return false;
    }
}

Archivo leer_dte(const std::string& nombre, std::string_view bytes, const std::string& rut_empresa) {
    if (bytes.size() > BYTES_DTE) throw ErrorRegistro(DTE_ENORME);
    if (rut_empresa.empty())
        throw ErrorRegistro("La empresa no tiene RUT: no se sabe si el documento es suyo");
    const std::string texto = en_utf8(sin_marca(bytes));
    if (!raiz_conocida(revisar_estructura(texto, true)))
        throw ErrorRegistro("El XML no es una factura electrónica (DTE)");
    pugi::xml_document xml;
    const auto leido = xml.load_buffer(texto.data(), texto.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!leido)
        throw ErrorRegistro("El XML está cortado o mal formado, byte " + std::to_string(leido.offset));
    Archivo a;
    a.nombre = nombre.substr(nombre.find_last_of('/') + 1);
    a.mes_completo = false;
    recorrer(xml, rut_empresa, a.documentos);
    if (a.documentos.empty()) throw ErrorRegistro("El XML no trae ningún documento");
    for (std::size_t i = 0; i < a.documentos.size(); ++i) {
        Documento& d = a.documentos[i];
        d.archivo = a.nombre;
        d.linea = static_cast<int>(i) + 1;
        if (d.fecha) a.mes = std::max(a.mes, Mes{anio(*d.fecha), mes(*d.fecha)});
    }
    a.libro = a.documentos.front().libro;
    return a;
}

} // namespace quorvel::registro
