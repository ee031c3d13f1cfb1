// The master tables: what each holds, who may change it, and what keeps a row from going.
#include "assistants/auxiliares.h"
#include "catalogos/catalogo.h"
#include "catalogos/reglas.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace quorvel {
namespace {

using enum Clase;
using Columna = ColumnaCatalogo;

// accounts and cost centres are built alike
constexpr Columna CENTRO{
    .nombre = "centro", .titulo = "Código", .clase = digitos, .largo = 20, .obligatoria = true};
constexpr Columna N_CENTRO{.nombre = "n_centro", .titulo = "Nombre", .obligatoria = true};
constexpr Columna GRUPO{.nombre = "g_cuenta",
                        .titulo = "Código",
                        .clase = digitos,
                        .largo = 1,
                        .obligatoria = true,
                        .ayuda = "El primer dígito de sus códigos"};
constexpr Columna N_GRUPO{.nombre = "n_g_cuenta", .titulo = "Nombre", .obligatoria = true};
constexpr Columna NIVELES{.nombre = "formato_centro",
                          .titulo = "Niveles",
                          .largo = 30,
                          .obligatoria = true,
                          .ayuda = "9.99.999: un dígito, dos más y tres más"};
constexpr Columna EN_USO{.nombre = "activo", .titulo = "En uso", .clase = marca};

constexpr Columna CUENTAS[] = {
    CENTRO,
    N_CENTRO,
    {.nombre = "g_cuenta",
     .titulo = "Grupo",
     .clase = eleccion,
     .obligatoria = true,
     .opciones = "select g_cuenta, n_g_cuenta from ctmgcuenta order by g_cuenta"},
    {.nombre = "activo",
     .titulo = "Recibe movimientos",
     .clase = marca,
     .ayuda = "Sin la marca es un título, o una cuenta que ya no se usa"},
    {.nombre = "req_auxiliar",
     .titulo = "Pide auxiliar",
     .clase = marca,
     .ayuda = "Cada línea lleva el cliente, proveedor o persona"},
};
constexpr Columna CENTROS[] = {
    CENTRO,
    N_CENTRO,
    {.nombre = "g_cuenta",
     .titulo = "Grupo",
     .clase = eleccion,
     .obligatoria = true,
     .opciones = "select g_cuenta, n_g_cuenta from ctmgcuentc order by g_cuenta"},
    {.nombre = "activo",
     .titulo = "Recibe movimientos",
     .clase = marca,
     .ayuda = "Sin la marca es un título, o un centro que ya no se usa"},
};
constexpr Columna GRUPOS[] = {
    GRUPO,
    N_GRUPO,
    {.nombre = "transitorio",
     .titulo = "De resultado",
     .clase = marca,
     .ayuda = "El cierre del año salda sus cuentas"},
    NIVELES,
};
constexpr Columna GRUPOS_CENTROS[] = {GRUPO, N_GRUPO, NIVELES};
constexpr Columna AUXILIARES[] = {
    {.nombre = "auxiliar",
     .titulo = "Código",
     .clase = digitos,
     .largo = 12,
     .obligatoria = true,
     .ceros = 6},
    {.nombre = "n_auxiliar", .titulo = "Nombre", .largo = 100, .obligatoria = true},
    {.nombre = "rut", .titulo = "RUT", .clase = rut, .largo = 14},
    {.nombre = "tipo",
     .titulo = "Tipo",
     .clase = eleccion,
     .obligatoria = true,
     .opciones = "select tipo_aux, n_tipo_aux from ctmtipoaux order by tipo_aux"},
    EN_USO,
};
constexpr Columna TIPOS[] = {
    {.nombre = "tipo_aux", .titulo = "Código", .largo = 2, .obligatoria = true, .ayuda = "Dos letras"},
    {.nombre = "n_tipo_aux", .titulo = "Nombre", .obligatoria = true},
    {.nombre = "sistema", .titulo = "Del sistema", .clase = marca, .ayuda = "Lo llevan otros programas"},
    EN_USO,
};
constexpr Columna DOCUMENTOS[] = {
    {.nombre = "documento",
     .titulo = "Código",
     .clase = digitos,
     .largo = 3,
     .obligatoria = true,
     .ceros = 3},
    {.nombre = "n_documento", .titulo = "Nombre", .obligatoria = true},
    {.nombre = "en_contabilidad",
     .titulo = "En contabilidad",
     .clase = marca,
     .expresion = "(select count(*) from adxdoc_sub b where b.subsistema='01' and "
                  "b.documento=admdocumen.documento)",
     .ayuda = "Se ofrece en la pantalla de comprobantes"},
};
constexpr Columna IMPUESTOS[] = {
    {.nombre = "otro_impuesto",
     .titulo = "Código",
     .clase = digitos,
     .largo = 3,
     .obligatoria = true,
     .ceros = 3},
    {.nombre = "descripcion", .titulo = "Nombre", .obligatoria = true},
    {.nombre = "tasa", .titulo = "Tasa %", .clase = decimal, .largo = 6, .obligatoria = true},
};
constexpr Columna USUARIOS[] = {
    {.nombre = "usuario", .titulo = "Código", .clase = numero, .largo = 5, .obligatoria = true},
    {.nombre = "n_usuario", .titulo = "Nombre", .obligatoria = true},
    {.nombre = "alias",
     .titulo = "Ve sólo lo suyo",
     .clase = marca,
     .si = "2",
     .no = "1",
     .ayuda = "Los comprobantes que él grabó por última vez"},
    {.nombre = "permiso", .titulo = "Borra líneas", .clase = marca, .letra = 2},
    {.nombre = "permiso", .titulo = "Imprime", .clase = marca, .letra = 4},
};

constexpr UsoCatalogo USOS_CUENTA[] = {
    {"ctmcentros", "centro>$ and centro<$:", "Tiene cuentas bajo ella"},
    {"ctdquorvel", "centro=$", "La usan comprobantes"},
    {"ctmsdmayor", "centro=$", "Tiene saldos"},
};
constexpr UsoCatalogo USOS_CENTRO[] = {
    {"ctmcentroc", "centro>$ and centro<$:", "Tiene centros bajo él"},
    {"ctdquorvel", "centro2=$", "Lo usan comprobantes"},
};
constexpr UsoCatalogo USOS_GRUPO[] = {{"ctmcentros", "g_cuenta=$", "Tiene cuentas"}};
constexpr UsoCatalogo USOS_GRUPO_CENTROS[] = {{"ctmcentroc", "g_cuenta=$", "Tiene centros de costo"}};
constexpr UsoCatalogo USOS_AUXILIAR[] = {{"ctdquorvel", "auxiliar=$", "Lo usan comprobantes"},
                                         {"ctmsdmayor", "auxiliar=$", "Tiene saldos"}};
constexpr UsoCatalogo USOS_TIPO[] = {{"ctxaux_cod", "tipo=$", "Tiene auxiliares"}};
constexpr UsoCatalogo USOS_DOCUMENTO[] = {
    {"ctcquorvel", "empresa in (select empresa from admempresa) and documento=$", "Lo usan comprobantes"},
    {"ctmconfigu", "documento_cierre=$", "Es el del cierre de un año"}};
constexpr UsoCatalogo USOS_IMPUESTO[] = {{"ctcquorvel", "codigo_otro_impuesto=$", "Lo usan comprobantes"},
                                         {"ctdquorvel", "codigo_otro_impuesto=$", "Lo usan comprobantes"}};
constexpr UsoCatalogo USOS_USUARIO[] = {{"ctcquorvel", "usuario=$", "Grabó comprobantes"}};

const Catalogo CATALOGOS[] = {
    {.nombre = "cuentas",
     .titulo = "Plan de cuentas",
     .singular = "la cuenta",
     .tabla = "ctmcentros",
     .columnas = CUENTAS,
     .usos = USOS_CUENTA,
     .elige = 2,
     .revisar = reglas::revisar_cuenta,
     .por_que_queda = reglas::cuenta_configurada_de},
    {.nombre = "grupos",
     .titulo = "Grupos de cuentas",
     .singular = "el grupo",
     .tabla = "ctmgcuenta",
     .columnas = GRUPOS,
     .usos = USOS_GRUPO,
     .revisar = reglas::revisar_grupo,
     .al_grabar = reglas::niveles_de_cuentas},
    {.nombre = "auxiliares",
     .titulo = "Auxiliares",
     .singular = "el auxiliar",
     .tabla = "ctxaux_cod",
     .columnas = AUXILIARES,
     .usos = USOS_AUXILIAR,
     .derecho = Derecho::quien_trabaja,
     .elige = 3,
     .revisar = reglas::revisar_auxiliar,
     .proponer = siguiente_codigo},
    {.nombre = "tipos",
     .titulo = "Tipos de auxiliar",
     .singular = "el tipo",
     .tabla = "ctmtipoaux",
     .columnas = TIPOS,
     .usos = USOS_TIPO,
     .revisar = reglas::revisar_tipo},
    {.nombre = "centros",
     .titulo = "Centros de costo",
     .singular = "el centro de costo",
     .tabla = "ctmcentroc",
     .columnas = CENTROS,
     .usos = USOS_CENTRO,
     .derecho = Derecho::quien_trabaja,
     .elige = 2,
     .revisar = reglas::revisar_centro},
    {.nombre = "grupos_centros",
     .titulo = "Grupos de centros de costo",
     .singular = "el grupo",
     .tabla = "ctmgcuentc",
     .columnas = GRUPOS_CENTROS,
     .usos = USOS_GRUPO_CENTROS,
     .revisar = reglas::revisar_grupo_centros,
     .al_grabar = reglas::niveles_de_centros},
    {.nombre = "documentos",
     .titulo = "Tipos de documento",
     .singular = "el tipo de documento",
     .tabla = "admdocumen",
     .columnas = DOCUMENTOS,
     .usos = USOS_DOCUMENTO,
     .proponer = reglas::siguiente_documento,
     .al_grabar = reglas::habilitar_documento,
     .al_borrar = reglas::retirar_documento},
    {.nombre = "impuestos",
     .titulo = "Otros impuestos",
     .singular = "el impuesto",
     .tabla = "ctmotroimp",
     .columnas = IMPUESTOS,
     .usos = USOS_IMPUESTO},
    {.nombre = "usuarios",
     .titulo = "Usuarios",
     .singular = "el usuario",
     .tabla = "admusuario",
     .columnas = USUARIOS,
     .usos = USOS_USUARIO,
     .revisar = reglas::revisar_usuario,
     .por_que_queda = reglas::unico_usuario,
     .proponer = reglas::siguiente_usuario},
};

} // namespace

std::span<const Catalogo> catalogos() { return CATALOGOS; }

const Catalogo& catalogo(std::string_view nombre) {
    const auto c = std::ranges::find_if(CATALOGOS, [&](const Catalogo& x) { return nombre == x.nombre; });
    if (c == std::end(CATALOGOS)) throw std::out_of_range(std::string(nombre));
    return *c;
}

std::size_t columna(const Catalogo& c, std::string_view nombre) {
    for (std::size_t i = 0; i < c.columnas.size(); ++i)
        if (nombre == c.columnas[i].nombre) return i;
    throw std::out_of_range(std::string(nombre));
}

bool puede_cambiar(const Catalogo& c, std::string_view permiso, int alias) {
    return c.derecho == Derecho::quien_trabaja || (permiso.starts_with("11111") && alias != 2);
}

} // namespace quorvel
