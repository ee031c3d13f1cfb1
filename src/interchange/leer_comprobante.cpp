#include "interchange/archivo_comprobante.h"
#include "platform/files/codepage.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel {

namespace {

bool solo_digitos(std::string_view s) {
    return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Where the reader stands, for what it has to say.
struct Sitio {
    long linea;
    const char* nombres;
    const AvisoProblema& aviso;
    void problema(std::size_t campo, const std::string& que, bool grave = true) const {
        aviso({linea, nombre_de_campo(nombres, campo), que, grave});
    }
};

/// Splits at ";". @return number of fields found; those beyond the array are only counted
template <std::size_t N>
std::size_t dividir(std::string_view linea, std::array<std::string_view, N>& campos, bool& sobra_texto) {
    std::size_t n = 0;
    for (;; ++n) {
        const auto fin = linea.find(';');
        const std::string_view campo = linea.substr(0, fin);
        if (n < N)
            campos[n] = campo;
        else
            sobra_texto = sobra_texto || campo.find_first_not_of(' ') != std::string_view::npos;
        if (fin == std::string_view::npos) return n + 1;
        linea.remove_prefix(fin + 1);
    }
}

template <std::size_t N>
std::array<std::string_view, N> campos_de(std::string_view linea, const Sitio& s, bool& sobran) {
    std::array<std::string_view, N> campos;
    bool sobra_texto = false;
    const std::size_t n = dividir(linea, campos, sobra_texto);
    if (n < N || sobra_texto)
        s.aviso(
            {s.linea, "", "tiene " + std::to_string(n) + " campos y deben ser " + std::to_string(N), n < N});
    sobran = sobran || n > N;
    if (linea.find('\t') != std::string_view::npos)
        for (std::size_t i = 0; i < N; ++i)
            if (campos[i].find('\t') != std::string_view::npos) s.problema(i, "tiene un tabulador");
    return campos;
}

/// A number of the file; 0 for an empty field and, after its problem, for one that says no number. Thousands
/// points, as spreadsheets write them, are refused: read as a decimal mark they would turn a million into one
/// peso.
Decimal valor(std::string_view campo, const Sitio& s, std::size_t indice) {
    const std::string recortado = recortar(campo);
    std::string_view t = recortado;
    if (t.empty()) return {};
    const bool negativo = t[0] == '-';
    if (negativo) t.remove_prefix(1);
    const auto marca = t.find_first_of(".,");
    const std::string_view entero = t.substr(0, marca);
    const std::string_view decimales = marca == std::string_view::npos ? "" : t.substr(marca + 1);
    const auto problema = [&](const char* que) {
        s.problema(indice, "\"" + std::string(campo) + que);
        return Decimal();
    };
    if (!solo_digitos(entero) || !solo_digitos(decimales) || (entero.empty() && decimales.empty()) ||
        t.size() > 18)
        return problema("\" no es un número (sin puntos de miles)");
    constexpr std::size_t CIFRAS = 15; // what a number holds exactly
    if (entero.substr(std::min(entero.find_first_not_of('0'), entero.size())).size() > CIFRAS)
        return problema("\" es demasiado grande");
    if (decimales.size() == 3 && !entero.empty() && entero.size() <= 3 && entero[0] != '0')
        return problema("\" parece llevar puntos de miles");
    const Decimal n = Decimal::leer(std::string(entero) + "," + std::string(decimales));
    return negativo ? -n : n;
}

/// An amount of the file in whole pesos, nothing for an empty field.
std::optional<Decimal> monto(std::string_view campo, const Sitio& s, std::size_t indice) {
    if (campo.size() < 16 && !campo.empty() && solo_digitos(campo)) return val_entero(campo);
    if (recortar(campo).empty()) return std::nullopt;
    return valor(campo, s, indice).redondeado();
}

/// A rate of the file as the screen shows it.
std::string tasa(std::string_view campo, const Sitio& s, std::size_t indice) {
    std::string t = recortar(campo);
    std::replace(t.begin(), t.end(), '.', ',');
    if (!numero_sql(t)) s.problema(indice, "\"" + std::string(campo) + "\" no es una tasa");
    return t;
}

/// dd/mm/yyyy or nothing for an impossible date.
std::optional<Fecha> fecha(std::string_view campo, const Sitio& s, std::size_t indice) {
    const auto f = leer_fecha(primeros(campo, 10));
    if (!f && !recortar(campo).empty())
        s.problema(indice, "\"" + std::string(campo) + "\" no es una fecha (dd/mm/aaaa)", false);
    return f;
}

bool marca(std::string_view campo) { return val_entero("0" + std::string(campo)) != 0; }

void leer_cabecera(Comprobante& c, std::string_view linea, bool& sobran, const AvisoProblema& aviso) {
    const Sitio s{LINEA_CABECERA, NOMBRES_CABECERA, aviso};
    const auto f = campos_de<CAMPOS_CABECERA>(linea, s, sobran);
    c.f_comp = fecha(f[1], s, 1);
    c.documento = std::to_string(val_entero(f[2]));
    c.num_docum = f[3];
    c.totales.debe = monto(f[5], s, 5).value_or(0);
    c.totales.haber = monto(f[6], s, 6).value_or(0);
    c.concepto = f[7];
    c.libro = f[8];
    c.rut_persona = f[9];
    c.num_ref = f[10];
    c.doc_libro = f[11];
    c.nombre = mayusculas(f[12]);
    c.fecha_factura = fecha(f[13], s, 13);
    c.fecha_pago = fecha(f[14], s, 14);
    c.codigo_no_recuperable = recortar(primeros(f[15], 2));
    c.activo_fijo = marca(f[16]);
    c.codigo_otro_impuesto = recortar(primeros(f[17], 3));
    c.tasa_impuesto_otro = tasa(f[18], s, 18);
    c.monto_neto = valor(f[19], s, 19);
    c.monto_exento = valor(f[20], s, 20);
    c.apertura = marca(f[21]);
    c.ifrs = recortar(primeros(f[22], 1));
}

constexpr std::size_t TASA = CAMPOS_DETALLE - 1;

Linea leer_linea(std::string_view linea, long n, bool& sobran, const AvisoProblema& aviso) {
    const Sitio s{n, NOMBRES_DETALLE, aviso};
    const auto f = campos_de<CAMPOS_DETALLE>(linea, s, sobran);
    const auto texto = [&](std::size_t i) { return sin_controles(f[i]); };
    return {texto(5),          codigo_seis(texto(6)),
            monto(f[7], s, 7), monto(f[8], s, 8),
            texto(9),          texto(10),
            texto(11),         texto(12),
            texto(13),         tasa(f[TASA], s, TASA)};
}

const char* nombres_de_linea(long n) { return n < 3 ? NOMBRES_CABECERA : NOMBRES_DETALLE; }

/// Other columns, or the same in another order, would be read into the wrong places.
void revisar_titulos(std::string_view linea, long n, const AvisoProblema& aviso) {
    const char* const nombres = nombres_de_linea(n);
    const auto igualado = [](std::string_view t) { return recortar(sin_acentos(recortar(t))); };
    const std::size_t campos = n == 1 ? CAMPOS_CABECERA : CAMPOS_DETALLE;
    for (std::size_t i = 0; i < campos; ++i) {
        const auto fin = linea.find(';');
        const std::string titulo(linea.substr(0, fin));
        linea.remove_prefix(fin == std::string_view::npos ? linea.size() : fin + 1);
        const std::string nombre = nombre_de_campo(nombres, i);
        if (igualado(titulo) != igualado(nombre))
            return aviso({n, nombre, "el título de la columna es \"" + titulo + "\"", false});
    }
}

/// Each unknown character is told with its place.
void avisar_desconocidos(std::string_view texto, const std::vector<std::size_t>& donde, bool grave,
                         const AvisoProblema& aviso) {
    std::size_t inicio = 0;
    long linea = 1;
    for (const std::size_t p : donde) {
        for (std::size_t fin; (fin = texto.find('\n', inicio)) < p; inicio = fin + 1) ++linea;
        const std::string_view antes = texto.substr(inicio, p - inicio);
        const auto campo = static_cast<std::size_t>(std::count(antes.begin(), antes.end(), ';'));
        const bool conocido = campo < (linea < 3 ? CAMPOS_CABECERA : CAMPOS_DETALLE);
        aviso({linea, conocido ? nombre_de_campo(nombres_de_linea(linea), campo) : "",
               "tiene un carácter desconocido", grave});
    }
}

std::vector<std::size_t> posiciones(std::string_view texto, std::string_view que, bool cualquiera) {
    std::vector<std::size_t> donde;
    const auto buscar = [&](std::size_t desde) {
        return cualquiera ? texto.find_first_of(que, desde) : texto.find(que, desde);
    };
    for (auto p = buscar(0); p != std::string_view::npos; p = buscar(p + 1)) donde.push_back(p);
    return donde;
}

std::string a_utf8(std::string_view bytes, const AvisoProblema& aviso) {
    constexpr std::string_view MARCA = "\xEF\xBB\xBF", SIN_SENTIDO = "\xEF\xBF\xBD",
                               SIN_LETRA = "\x81\x8D\x8F\x90\x9D";
    const bool marcado = bytes.starts_with(MARCA);
    if (marcado) bytes.remove_prefix(MARCA.size());
    if (marcado || (es_utf8(bytes) && bytes.find(SIN_SENTIDO) == std::string_view::npos)) {
        std::string utf8 = normalizar(bytes);
        avisar_desconocidos(utf8, posiciones(utf8, SIN_SENTIDO, false), false, aviso);
        return utf8;
    }
    const auto vacios = posiciones(bytes, SIN_LETRA, true);
    avisar_desconocidos(bytes, vacios, true, aviso);
    std::string legible(bytes);
    for (const std::size_t p : vacios) legible[p] = '?';
    return Codepage().from_windows1252(legible).text;
}

} // namespace

ComprobanteImportado revisar_archivo(std::string_view bytes, const AvisoProblema& aviso,
                                     const Avance& avance) {
    constexpr long CADA = 5000;
    if (bytes.find("empresa") > 3) return {}; // perhaps behind a mark
    const std::string utf8 = a_utf8(bytes, aviso);
    std::string_view resto = utf8;
    // blank lines at the end are no lines; blanks behind a last cell are the cell's
    for (auto fin = resto.rfind('\n'); fin != std::string_view::npos; fin = resto.rfind('\n')) {
        if (resto.find_first_not_of("\r ", fin + 1) != std::string_view::npos) break;
        resto = resto.substr(0, fin);
    }
    const long total = 1 + std::count(resto.begin(), resto.end(), '\n');
    ComprobanteImportado i;
    for (long n = 1; n <= total; ++n) {
        const auto fin = resto.find('\n');
        std::string_view linea = resto.substr(0, fin);
        resto.remove_prefix(fin == std::string_view::npos ? resto.size() : fin + 1);
        if (linea.ends_with('\r')) linea.remove_suffix(1);
        if (n == 1) {
            if (linea.substr(0, linea.find(';')) != "empresa") return i;
            i.reconocido = true;
            i.con_cabecera = total >= LINEA_CABECERA;
            i.c.lineas.reserve(static_cast<std::size_t>(std::max(0L, total - 3)));
        }
        if (n == 1 || n == 3)
            revisar_titulos(linea, n, aviso);
        else if (n == LINEA_CABECERA)
            leer_cabecera(i.c, linea, i.sobran_campos, aviso);
        else
            i.c.lineas.push_back(leer_linea(linea, n, i.sobran_campos, aviso));
        if (n % CADA == 0 && avance && !avance(n, total)) throw ErrorArchivo("Importación cancelada");
    }
    return i;
}

ComprobanteImportado interpretar_archivo(std::string_view bytes, const Avance& avance) {
    const auto primero = [](const ProblemaArchivo& p) {
        if (!p.grave) return;
        const std::string campo = p.campo.empty() ? "" : ", campo \"" + p.campo + "\"";
        throw ErrorArchivo("Línea " + std::to_string(p.linea) + campo + ": " + p.mensaje);
    };
    return revisar_archivo(bytes, primero, avance);
}

} // namespace quorvel
