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

/// Where the reader stands, for its messages.
struct Sitio {
    long linea;
    const char* nombres;
    [[nodiscard]] ErrorArchivo error(std::size_t campo, const std::string& que) const {
        std::string_view n(nombres);
        for (std::size_t i = 0; i < campo; ++i) n.remove_prefix(n.find(';') + 1);
        return ErrorArchivo("Línea " + std::to_string(linea) + ", campo \"" +
                            recortar(n.substr(0, n.find(';'))) + "\": " + que);
    }
};

/// Splits at ";". @return number of fields found; those beyond the array are only counted
template <std::size_t N>
std::size_t dividir(std::string_view linea, std::array<std::string_view, N>& campos) {
    std::size_t n = 0;
    for (;; ++n) {
        const auto fin = linea.find(';');
        if (n < N) campos[n] = linea.substr(0, fin);
        if (fin == std::string_view::npos) return n + 1;
        linea.remove_prefix(fin + 1);
    }
}

template <std::size_t N>
std::array<std::string_view, N> campos_de(std::string_view linea, const Sitio& s, bool& sobran) {
    std::array<std::string_view, N> campos;
    const std::size_t n = dividir(linea, campos);
    if (n < N)
        throw ErrorArchivo("Línea " + std::to_string(s.linea) + ": tiene " + std::to_string(n) +
                           " campos y deben ser " + std::to_string(N));
    sobran = sobran || n > N;
    if (linea.find('\t') != std::string_view::npos)
        for (std::size_t i = 0; i < N; ++i)
            if (campos[i].find('\t') != std::string_view::npos) throw s.error(i, "tiene un tabulador");
    return campos;
}

void agrupar(std::string& salida, std::string_view digitos) {
    digitos.remove_prefix(std::min(digitos.find_first_not_of('0'), digitos.size() - 1));
    for (std::size_t i = 0; i < digitos.size(); ++i) {
        if (i && (digitos.size() - i) % 3 == 0) salida += '.';
        salida += digitos[i];
    }
}

/// An amount of the file as a cell shows it. Thousands points, as spreadsheets write them, are refused: read
/// as a decimal mark they would turn a million into one peso.
void monto(std::string& salida, std::string_view campo, const Sitio& s, std::size_t indice) {
    const std::string recortado = recortar(campo);
    std::string_view t = recortado;
    if (t.empty()) return;
    if (t.size() < 16 && solo_digitos(t)) return agrupar(salida, t);
    const bool negativo = t[0] == '-';
    if (negativo) t.remove_prefix(1);
    const auto marca = t.find_first_of(".,");
    const std::string_view entero = t.substr(0, marca);
    const std::string_view decimales = marca == std::string_view::npos ? "" : t.substr(marca + 1);
    if (!solo_digitos(entero) || !solo_digitos(decimales) || (entero.empty() && decimales.empty()) ||
        t.size() > 18)
        throw s.error(indice, "\"" + std::string(campo) + "\" no es un número (sin puntos de miles)");
    if (decimales.size() == 3 && !entero.empty() && entero.size() <= 3 && entero[0] != '0')
        throw s.error(indice, "\"" + std::string(campo) + "\" parece llevar puntos de miles");
    const double valor = valnumerobase(std::string(entero) + "." + std::string(decimales));
    salida += formato(negativo ? -valor : valor, "#,##0");
}
std::string monto(std::string_view campo, const Sitio& s, std::size_t indice) {
    std::string r;
    monto(r, campo, s, indice);
    return r.empty() ? "0" : r;
}

/// dd/mm/yyyy or nothing for an impossible date.
std::string fecha(std::string_view campo) {
    const auto f = leer_fecha(reemplazar(primeros(campo, 10), "-", "/"));
    return f ? fecha_dmy(*f) : std::string();
}

int marca(std::string_view campo) { return val_entero("0" + std::string(campo)) != 0 ? 1 : 0; }

void leer_cabecera(ComprobanteImportado& c, std::string_view linea) {
    const Sitio s{2, NOMBRES_CABECERA};
    const auto f = campos_de<CAMPOS_CABECERA>(linea, s, c.sobran_campos);
    c.con_cabecera = true;
    c.f_comp = fecha(f[1]);
    c.documento = val_entero(f[2]);
    c.numero = f[3];
    c.total_debe = monto(f[5], s, 5);
    c.total_haber = monto(f[6], s, 6);
    c.concepto = f[7];
    c.libro = f[8];
    c.rut_persona = f[9];
    c.num_ref = f[10];
    c.doc_libro = f[11];
    c.nombre = mayusculas(f[12]);
    c.fecha_doc = fecha(f[13]);
    c.fecha_pago = fecha(f[14]);
    c.codigo_no_recuperable = recortar(primeros(f[15], 2));
    c.activo_fijo = marca(f[16]);
    c.codigo_otro_impuesto = recortar(primeros(f[17], 3));
    c.tasa_impuesto_otro = reemplazar(f[18], ".", ",");
    c.monto_neto = valnumerobase("0" + std::string(f[19]));
    c.monto_exento = valnumerobase("0" + std::string(f[20]));
    c.apertura = marca(f[21]);
    c.norma = recortar(primeros(f[22], 1));
}

std::string leer_fila(std::string_view linea, long n, bool& sobran) {
    const Sitio s{n, NOMBRES_DETALLE};
    const auto f = campos_de<CAMPOS_DETALLE>(linea, s, sobran);
    std::string fila = std::to_string(n - 3);
    fila.reserve(linea.size());
    const auto celda = [&](std::string_view texto) { (fila += '\t') += texto; };
    celda(f[5]);
    celda(f[6].empty() ? std::string() : codigo_seis(f[6]));
    for (const std::size_t i : {7U, 8U}) {
        fila += '\t';
        monto(fila, f[i], s, i);
    }
    for (std::size_t i = 9; i < CAMPOS_DETALLE; ++i) celda(f[i]);
    return fila;
}

std::string a_utf8(std::string_view bytes) {
    constexpr std::string_view MARCA = "\xEF\xBB\xBF";
    if (bytes.starts_with(MARCA)) return normalizar(bytes.substr(MARCA.size()));
    Converted c = Codepage().from_windows1252(bytes);
    if (!c.bad) return std::move(c.text);
    const std::string_view antes = bytes.substr(0, *c.bad);
    const auto inicio = antes.rfind('\n') + 1; // npos + 1 is the beginning
    const long linea = 1 + std::count(antes.begin(), antes.end(), '\n');
    const auto campo = 1 + std::count(antes.begin() + static_cast<std::ptrdiff_t>(inicio), antes.end(), ';');
    throw ErrorArchivo("Línea " + std::to_string(linea) + ", campo " + std::to_string(campo) +
                       ": tiene un carácter desconocido");
}

} // namespace

ComprobanteImportado interpretar_archivo(std::string_view bytes, const AvanceLectura& avance) {
    constexpr long CADA = 5000;
    const std::string utf8 = a_utf8(bytes);
    std::string_view resto = utf8;
    while (!resto.empty() && std::string_view("\r\n ").find(resto.back()) != std::string_view::npos)
        resto.remove_suffix(1); // blank lines at the end are no lines
    const long total = 1 + std::count(resto.begin(), resto.end(), '\n');
    ComprobanteImportado c;
    for (long n = 1; n <= total; ++n) {
        const auto fin = resto.find('\n');
        std::string_view linea = resto.substr(0, fin);
        resto.remove_prefix(fin == std::string_view::npos ? resto.size() : fin + 1);
        if (linea.ends_with('\r')) linea.remove_suffix(1);
        if (n == 1) {
            if (linea.substr(0, linea.find(';')) != "empresa") return c;
            c.reconocido = true;
            c.filas.reserve(static_cast<std::size_t>(std::max(0L, total - 3)));
        } else if (n == 2) {
            leer_cabecera(c, linea);
        } else if (n > 3) {
            c.filas.push_back(leer_fila(linea, n, c.sobran_campos));
        }
        if (n % CADA == 0 && avance && !avance(n, total)) throw ErrorArchivo("Importación cancelada");
    }
    return c;
}

} // namespace quorvel
