#include "fallas/simulacion.h"

#include "historia/comenzar.h"
#include "platform/db/literal.h"
#include "platform/ui/ctlConsulta.h"
#include "screen/borrador.h"
#include "screen/borrador_campos.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

namespace quorvel::fallas {

using pruebas::Pantalla;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";
constexpr const char* SOLO_LECTURA =
    "Comprobante contable solo lectura porque esta siendo modificado por otro usuario";
constexpr const char* CAMBIADO = "Este comprobante ya no es el que abrió: ";
constexpr const char* DIAS[] = {"14/06/", "15/06/", "30/06/"};
constexpr const char* DOCUMENTOS[] = {"001 TRASPASO", "002 COMPRA"};

std::int64_t suma(const std::vector<LineaPlana>& lineas, std::int64_t LineaPlana::*lado) {
    std::int64_t total = 0;
    for (const LineaPlana& l : lineas) total += l.*lado;
    return total;
}

std::vector<std::string> separar(const std::string& texto, char entre) {
    std::vector<std::string> partes;
    std::istringstream in(texto);
    for (std::string parte; std::getline(in, parte, entre);) partes.push_back(parte);
    return partes;
}

LineaPlana linea_de(const std::string& cuenta, const std::string& auxiliar, const std::string& debe,
                    const std::string& haber) {
    return {cuenta, auxiliar, static_cast<std::int64_t>(valnumeroformato(debe)),
            static_cast<std::int64_t>(valnumeroformato(haber))};
}

/// What a draft on disk says of its voucher.
ContenidoPlano contenido(const ContenidoBorrador& b) {
    ContenidoPlano c{recortar_fin(b.campos.at("txtconcepto")),
                     b.campos.at("cmbifrs").substr(0, 1),
                     b.campos.at("chkApertura") == "1",
                     {},
                     separar(b.campos.at("adjuntos"), '\n')};
    for (const std::string& fila : b.filas) {
        auto celdas = separar(fila, '\t');
        celdas.resize(5);
        c.lineas.push_back(linea_de(celdas[1], celdas[2], celdas[3], celdas[4]));
    }
    return c;
}

std::string versiones_de(clsConexion& db) { return apoyo::filas(db, "select count(*) from ctdhistoria"); }

std::string monto(std::int64_t n) { return n == 0 ? "" : Decimal(n).formato("#,##0"); }

} // namespace

ClavePlana Simulacion::Ventana::clave_escrita() const {
    return {fecha_iso(*p->f.mskF_comp.date()), recortar_fin(p->f.cmbDocumento.Text().substr(0, 3)),
            recortar_fin(p->f.txtNum_doc.Text())};
}

Simulacion::Simulacion(apoyo::Motor motor, unsigned semilla) : azar_(semilla) {
    escena_ = {apoyo::conexion_empresa(motor), apoyo::carpeta_nueva()};
    db_ = abrir_sesion(escena_.conexion);
    comenzar_historia(*db_, 1, 1);
    apoyo::ejecutar(*db_, "insert into ctmsdcenth(empresa,anio,centro,debe6) values (1,2024,'101001',0)");
    std::string carpeta;
    for (const int usuario : {1, 1, 2}) { // two windows of one user, in one folder with its drafts
        if (carpeta.empty() || usuario == 2) carpeta = apoyo::carpeta_nueva();
        std::ofstream(carpeta + "/nivo.ini") << "[nivo]\nbase=" << escena_.carpeta << "/\n";
        Ventana v;
        v.usuario = usuario;
        v.carpeta = carpeta;
        (void)reabrir(v);
        ventanas_.push_back(std::move(v));
    }
}

const std::vector<Simulacion::Accion> Simulacion::ACCIONES = {
    {"nuevo", 8, &Simulacion::nuevo},
    {"llenar", 16, &Simulacion::llenar},
    {"editar", 10, &Simulacion::editar},
    {"cambiar_fecha", 6, &Simulacion::cambiar_fecha},
    {"guardar", 26, &Simulacion::guardar},
    {"buscar", 16, &Simulacion::buscar},
    {"anular", 3, &Simulacion::anular},
    {"eliminar", 4, &Simulacion::eliminar},
    {"cortar", 5, &Simulacion::cortar},
    {"copiar", 4, &Simulacion::copiar},
    {"adjuntar", 9, &Simulacion::adjuntar},
    {"quitar_adjunto", 3, &Simulacion::quitar_adjunto},
    {"cheque", 3, &Simulacion::cheque},
    {"generar_cierre", 3, &Simulacion::generar_cierre},
    {"cerrar_anio", 4, &Simulacion::cerrar_anio},
    {"apertura", 8, &Simulacion::apertura},
    {"reabrir", 5, &Simulacion::reabrir},
    {"recuperar", 7, &Simulacion::recuperar},
    {"otro_programa", 4, &Simulacion::otro_programa},
};

std::string Simulacion::paso() {
    ++paso_;
    const std::size_t cual = azar_() % ventanas_.size();
    Ventana& v = ventanas_[cual];
    int pesos = 0;
    for (const Accion& a : ACCIONES) pesos += a.peso;
    int dado = al_azar(pesos);
    const Accion* accion = ACCIONES.data();
    while (dado >= accion->peso) dado -= (accion++)->peso;
    ultima_ =
        "window " + std::to_string(cual) + " of user " + std::to_string(v.usuario) + ": " + accion->nombre;
    (void)v.p->mensajes();
    const std::string antes = huella(*db_), versiones = versiones_de(*db_);
    const std::string esperado = (this->*accion->hacer)(v);
    v.p->escritorio.olvidar();
    const std::string dicho = ultimo_aviso(*v.p);
    if (!dicho.starts_with(esperado) || (esperado.empty() && !dicho.empty()))
        return "said: " + dicho + "\nexpected: " + esperado;
    const std::string base = Modelo::leer(*db_), modelo = modelo_.texto();
    const bool ajeno = accion->hacer == &Simulacion::otro_programa;
    if (ajeno) comenzar_historia(*db_, 1, 0); // the history catches up with what it was not told
    if (!ajeno && (versiones_de(*db_) != versiones) !=
                      (dicho == GRABADO || dicho == "Cheque Grabado" || antes != huella(*db_)))
        return "history: " + versiones + " > " + versiones_de(*db_);
    if (base != modelo) return "database:\n" + base + "\nmodel:\n" + modelo;
    for (const Ventana& w : ventanas_) {
        const std::string creido = mostrado(w.c), visto = mostrado(en_pantalla(w));
        if (visto != creido) return "window shows: " + visto + "\nexpected: " + creido;
        if (w.p->f.estado.comprobante_cierre != w.es_cierre) return "the mark of a closing voucher";
        vistos_.insert({w.usuario, creido});
    }
    return archivos_mal();
}

std::string Simulacion::revisar() const {
    constexpr std::size_t LISTADOS = 50; // the checker counts what is beyond
    const std::set<std::string> esperados = modelo_.aperturas_distintas();
    std::istringstream dichos(revision(escena_));
    std::size_t n = 0;
    for (std::string dicho; std::getline(dichos, dicho);) {
        dicho = reemplazar(dicho, " )", ")");                           // a padded account
        if (dicho.starts_with("Archivo adjunto que no está")) continue; // archivos_mal knows which may be
        const bool cuenta = esperados.size() > LISTADOS && dicho.ends_with(" más");
        if (!cuenta && esperados.count(dicho) == 0) return "checker: " + dicho;
        n += cuenta ? 0 : 1;
    }
    const std::size_t debe = std::min(esperados.size(), LISTADOS);
    return n == debe ? "" : "checker: " + std::to_string(n) + " findings instead of " + std::to_string(debe);
}

std::string Simulacion::mostrado(const ContenidoPlano& c) {
    std::string t = c.norma + (c.apertura ? "1" : "0") + c.concepto;
    for (const LineaPlana& l : c.lineas)
        t += ";" + l.cuenta + "|" + l.auxiliar + "|" + std::to_string(l.debe) + "|" + std::to_string(l.haber);
    for (const std::string& nombre : c.adjuntos) t += ";" + nombre;
    return t;
}

ContenidoPlano Simulacion::en_pantalla(const Ventana& v) {
    const frmQuorvel& f = v.p->f;
    ContenidoPlano c{recortar_fin(f.txtconcepto.Text()),
                     f.cmbifrs.Text().substr(0, 1),
                     f.chkApertura.Value() == 1,
                     {},
                     {}};
    const ui::ctlPlanilla& g = f.grdDetalle;
    for (int i = 0; i < g.Rows(); ++i)
        c.lineas.push_back(
            linea_de(g.TextMatrix(i, 1), g.TextMatrix(i, 2), g.TextMatrix(i, 3), g.TextMatrix(i, 4)));
    for (int i = 0; i < f.lstadjunto.ListCount(); ++i) c.adjuntos.push_back(f.lstadjunto.List(i));
    return c;
}

void Simulacion::guardado(Ventana& v) {
    ComprobantePlano& c = modelo_.comprobantes[v.clave];
    const auto& [fecha, documento, numero] = v.clave;
    c.interno =
        apoyo::filas(*db_, "select comprobante_adjunto,nro_correlativo from ctcquorvel where f_comp=" +
                               sql_fecha(leer_fecha_iso(fecha)) + " and documento='" + documento +
                               "' and num_docum='" + numero + "'");
    huellas_[v.p->f.estado.huella_guardada] = v.cargado = c;
}

void Simulacion::limpiar(Ventana& v) {
    renovar(v);
    v.c = {v.c.concepto, "0", false, {}, {}};
    v.cortado_cheque.clear();
}

void Simulacion::renovar(Ventana& v) {
    modelo_.desbloquear(v.usuario);
    v.nuevo = true;
    v.solo_lectura = v.cierre = v.es_cierre = false;
    v.estado.clear();
}

void Simulacion::poner_lineas(Ventana& v, bool cuadrado) {
    static const LineaPlana CUENTAS[] = {{"101001", ""},      {"101002", ""}, {"301001", ""},
                                         {"401001", ""},      {"501001", ""}, {"103001", "000012"},
                                         {"201001", "000013"}};
    std::int64_t saldo = 0;
    v.c.lineas.clear();
    const int cuantas = 2 + al_azar(3);
    for (int i = 0; i < cuantas; ++i) {
        LineaPlana l = CUENTAS[azar_() % std::size(CUENTAS)];
        std::int64_t importe = 1 + al_azar(2000000);
        if (i == cuantas - 1) importe = std::abs(saldo) + (cuadrado ? 0 : 1);
        const bool debe = i == cuantas - 1 ? saldo < 0 : i == 0 || al_azar(2) == 0;
        if (importe == 0) importe = 5; // an even sum already: the voucher does not balance
        (debe ? l.debe : l.haber) = importe;
        saldo += l.debe - l.haber;
        v.c.lineas.push_back(l);
    }
    ui::ctlPlanilla& g = v.p->f.grdDetalle;
    g.Clear();
    for (const LineaPlana& l : v.c.lineas)
        g.AddItem("1\t" + l.cuenta + "\t" + l.auxiliar + "\t" + monto(l.debe) + "\t" + monto(l.haber) +
                  "\tglosa");
    v.p->f.RecalcularTotales();
}

std::string Simulacion::estorbo(const Ventana& v) const {
    const auto c = modelo_.comprobantes.find(v.clave);
    if (c == modelo_.comprobantes.end()) return CAMBIADO;
    if (c->second.bloqueo != 0 && c->second.bloqueo != v.usuario) return SOLO_LECTURA;
    return c->second.igual(v.cargado) ? "" : CAMBIADO;
}

std::string Simulacion::fecha_al_azar() {
    const int anio = modelo_.periodo.anio - (al_azar(10) == 0 ? 1 : 0);
    return DIAS[azar_() % std::size(DIAS)] + std::to_string(anio);
}

std::string Simulacion::nuevo(Ventana& v) {
    v.p->nuevo();
    limpiar(v);
    return "";
}

std::string Simulacion::llenar(Ventana& v) {
    if (!v.nuevo || v.cierre) return nuevo(v);
    frmQuorvel& f = v.p->f;
    const std::string fecha = fecha_al_azar(), documento = DOCUMENTOS[azar_() % std::size(DOCUMENTOS)];
    f.mskF_comp.SetText(fecha);
    v.p->elegir("cmbDocumento", documento);
    const std::string propuesto = std::to_string(modelo_.propuesto(documento.substr(0, 3), fecha.substr(6)));
    if (f.txtNum_doc.Text() != propuesto) return "number " + propuesto + " instead of " + f.txtNum_doc.Text();
    if (al_azar(5) == 0) f.txtNum_doc.SetText(std::to_string(1 + al_azar(30)));
    v.c.concepto = "Glosa de O'Higgins " + std::to_string(paso_);
    f.txtconcepto.SetText(v.c.concepto);
    f.cmbifrs.SetListIndex(al_azar(3));
    v.c.norma = f.cmbifrs.Text().substr(0, 1);
    poner_lineas(v, al_azar(8) != 0);
    return "";
}

std::string Simulacion::editar(Ventana& v) {
    if (v.nuevo || v.solo_lectura || v.estado != "P") return "";
    v.c.concepto = "Corregido " + std::to_string(paso_);
    v.p->f.txtconcepto.SetText(v.c.concepto);
    if (al_azar(2) == 0) poner_lineas(v, true);
    return "";
}

std::string Simulacion::cambiar_fecha(Ventana& v) {
    if (v.nuevo) v.p->f.mskF_comp.SetText(fecha_al_azar());
    return "";
}

std::string Simulacion::guardar(Ventana& v) {
    const ClavePlana clave = v.nuevo ? v.clave_escrita() : v.clave;
    const std::int64_t debe = suma(v.c.lineas, &LineaPlana::debe);
    const std::string kind = v.p->f.cmbDocumento.Text();
    const std::string creido_fuera = modelo_.fuera(v.creido, clave),
                      fuera = modelo_.fuera(modelo_.periodo, clave);
    std::string esperado = GRABADO;
    if (!v.nuevo && (v.solo_lectura || v.estado != "P"))
        esperado.clear();
    else if (v.nuevo && kind == "(Ninguno)")
        esperado = "Ingrese tipo de documento";
    else if (!creido_fuera.empty())
        esperado = creido_fuera;
    else if (v.c.lineas.empty())
        esperado = "Ingrese detalle del comprobante";
    else if (debe != suma(v.c.lineas, &LineaPlana::haber))
        esperado = "Comprobante descuadrado";
    else if (v.nuevo && modelo_.comprobantes.count(clave) != 0)
        esperado = "Ya existe un comprobante contable";
    else if (!fuera.empty()) // an older window learns of it when it saves
        esperado = fuera;
    else if (!v.nuevo && !estorbo(v).empty())
        esperado = estorbo(v);
    const std::int64_t propuesto = v.p->f.estado.numero_propuesto;
    const std::string conjunto = v.p->f.gstrcomprobante_adjunto;
    v.p->guardar();
    heredar(conjunto, v.p->f.gstrcomprobante_adjunto, v.c.adjuntos);
    if (esperado != GRABADO) return esperado;
    ComprobantePlano& c = modelo_.comprobantes[clave];
    static_cast<ContenidoPlano&>(c) = v.c;
    c.total = debe;
    c.usuario = v.usuario;
    if (v.nuevo) {
        c.cheque = v.cortado_cheque;
        if (val_entero(std::get<2>(clave)) >= propuesto)
            modelo_.ultimo_emitido[std::get<1>(clave)] = std::get<2>(clave);
    }
    v.cargado_cheque = std::exchange(v.cortado_cheque, "");
    if (v.cierre) modelo_.periodo.cierre = clave;
    v.es_cierre = modelo_.periodo.cierre == clave;
    if (v.es_cierre) v.creido.cierre = clave;
    v.nuevo = v.cierre = false;
    v.estado = "P";
    v.clave = clave;
    guardado(v);
    modelo_.desbloquear(v.usuario);
    modelo_.bloquear(clave, v.usuario);
    return esperado;
}

ClavePlana Simulacion::al_azar_guardado() {
    const ClavePlana& de_otra = ventanas_[azar_() % ventanas_.size()].clave; // what overlaps is what fails
    if (al_azar(3) == 0 && modelo_.comprobantes.contains(de_otra)) return de_otra;
    auto elegido = modelo_.comprobantes.begin();
    std::advance(elegido, al_azar(static_cast<int>(modelo_.comprobantes.size())));
    return elegido->first;
}

std::string Simulacion::buscar(Ventana& v) {
    return modelo_.comprobantes.empty() ? "" : abrir(v, al_azar_guardado());
}

std::string Simulacion::abrir(Ventana& v, const ClavePlana& clave) {
    const auto& [fecha, documento, numero] = clave;
    v.p->escritorio.al_abrir([&](ui::Form& forma) {
        auto& lista = dynamic_cast<ui::ctlConsulta&>(*forma.find("ctlConsulta1"));
        for (std::size_t i = 0; i < lista.rows().size(); ++i) {
            const auto& fila = lista.rows()[i];
            if ((fila[0] == fecha || fila[0] == fecha_dmy(*leer_fecha_iso(fecha))) &&
                recortar(fila[1]) == documento && recortar(fila[2]) == numero)
                return lista.pick(static_cast<int>(i));
        }
        lista.cancel();
    });
    v.p->f.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
    return cargar(v, clave);
}

std::string Simulacion::cargar(Ventana& v, const ClavePlana& clave) {
    ComprobantePlano& c = modelo_.comprobantes[clave];
    modelo_.desbloquear(v.usuario);
    v.nuevo = v.cierre = false;
    v.cortado_cheque.clear();
    v.cargado_cheque = c.cheque;
    v.clave = clave;
    v.es_cierre = modelo_.periodo.cierre == v.clave;
    v.estado = c.estado;
    v.c = c;
    guardado(v);
    if (c.estado == "X") v.c.adjuntos.clear(); // an annulled voucher's are kept, not shown
    v.solo_lectura = c.bloqueo != 0 && c.bloqueo != v.usuario;
    if (v.solo_lectura) return SOLO_LECTURA;
    c.bloqueo = v.usuario;
    return "";
}

std::string Simulacion::anular(Ventana& v) {
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.mnuAnular.Enabled();
    v.p->pulsar("mnuAnular");
    if (!activo) return "";
    if (v.es_cierre) return "Comprobante de Cierre anual no puede ser anulado";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (const std::string e = estorbo(v); !e.empty()) return e;
    ComprobantePlano& c = modelo_.comprobantes[v.clave];
    for (const LineaPlana& l : c.lineas)
        if (l.cuenta == "101001" && std::get<0>(v.clave).starts_with("2024-06"))
            modelo_.saldo_caja -= l.debe - l.haber;
    c.estado = v.estado = "X";
    c.concepto = v.c.concepto;
    c.usuario = v.usuario;
    c.lineas.clear();
    v.c.lineas.clear();
    return "Comprobante Anulado";
}

std::string Simulacion::eliminar(Ventana& v) {
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.mnuEliminar.Enabled();
    v.p->pulsar("mnuEliminar");
    if (!activo) return "";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (const std::string e = estorbo(v); !e.empty()) return e;
    modelo_.comprobantes.erase(v.clave);
    limpiar(v);
    return "";
}

std::string Simulacion::cortar(Ventana& v) {
    const auto borradores = [&] {
        return archivos_borrador(carpeta_borradores(v.p->f), grupo_de(v.p->f)).size();
    };
    const std::size_t antes = borradores();
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.cmdcortar.Enabled();
    v.p->pulsar("cmdcortar");
    if (!activo) return "";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (const std::string e = estorbo(v); !e.empty())
        return e == SOLO_LECTURA && borradores() != antes ? "no draft of an intact voucher" : e;
    v.cortado_cheque = modelo_.comprobantes[v.clave].cheque;
    modelo_.comprobantes.erase(v.clave);
    renovar(v);
    return al_azar(3) == 0 ? guardar(v) : "";
}

std::string Simulacion::copiar(Ventana& v) {
    const std::string conjunto = v.p->f.gstrcomprobante_adjunto;
    v.p->pulsar("cmdCopiar");
    heredar(conjunto, v.p->f.gstrcomprobante_adjunto, v.c.adjuntos);
    renovar(v);
    return "";
}

std::string Simulacion::cheque(Ventana& v) {
    const std::string numero = std::to_string(1000 + paso_);
    llenar_dialogo(*v.p, "mnucheque",
                   {{"txtcheque", numero}, {"txtfecha", "14/06/2024"}, {"txtbeneficiario", "PEDRO"}});
    if (v.nuevo) return "Debe grabar el comprobante antes de imprimir la factura";
    const auto c = modelo_.comprobantes.find(v.clave);
    if (c != modelo_.comprobantes.end()) c->second.cheque = numero;
    return "Cheque Grabado";
}

std::string Simulacion::generar_cierre(Ventana& v) {
    const PeriodoPlano& p = modelo_.periodo;
    if (p.cierre && modelo_.comprobantes.contains(*p.cierre) && al_azar(2) == 0) {
        (void)abrir(v, *p.cierre);
        (void)v.p->mensajes(); // it may be read-only
    }
    const bool rehace = v.es_cierre && p.cierre && v.estado == "P" && !v.solo_lectura;
    if (rehace) return ""; // would add the same lines again
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("mnuGenerarCierre");
    v.creido = p;
    if (p.cierre && modelo_.vigente(*p.cierre)) return "Comprobante de Cierre ya fue Generado";
    if (!modelo_.tiene_movimientos(p.anio)) return "Antes de Generar Comprobante de Cierre debe ingresar";
    limpiar(v);
    v.cierre = true;
    v.c.concepto = "CIERRE ANUAL DEL AÑO " + std::to_string(p.anio);
    v.c.lineas = en_pantalla(v).lineas; // the largest credit comes first
    std::vector<LineaPlana> por_cuenta(v.c.lineas.begin(), v.c.lineas.end() - 1);
    std::ranges::sort(por_cuenta);
    por_cuenta.push_back(v.c.lineas.back());
    if (por_cuenta != modelo_.cierre()) return "the lines of a closing";
    return al_azar(2) == 0 ? guardar(v) : "";
}

std::string Simulacion::cerrar_anio(Ventana& v) {
    PeriodoPlano& p = modelo_.periodo;
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("mnuCerrarAnio");
    if (!p.cierre) return "Antes de Cerrar el Año de debe Generar el Comprobante de Cierre";
    if (!modelo_.resultados_en_cero()) return "Comprobante de Cierre tiene errores";
    p = {p.anio + 1, std::nullopt};
    for (auto& [documento, numero] : modelo_.ultimo_emitido) numero = "0";
    v.creido = p;
    limpiar(v);
    return "Cierre Anual de " + std::to_string(p.anio - 1) + " Completado con éxito";
}

std::string Simulacion::apertura(Ventana& v) {
    const int anio = modelo_.periodo.anio, norma = (al_azar(5) + 1) / 2;
    (void)nuevo(v);
    v.p->f.mskF_comp.SetText("01/01/" + std::to_string(anio));
    v.p->elegir("cmbDocumento", DOCUMENTOS[0]);
    v.p->f.cmbifrs.SetListIndex(norma);
    v.c.norma = std::to_string(norma);
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar(al_azar(2) == 0 ? "mnuApertura" : "mnuAperturaDoc");
    if (norma == 0) return "Seleccione la norma TRIBUTARIA o IFRS";
    if (!modelo_.tiene_movimientos(anio - 1))
        return "Empresa no tiene movimientos en año " + std::to_string(anio - 1);
    v.c.apertura = true;
    v.c.lineas = modelo_.apertura(anio, v.c.norma);
    return al_azar(2) == 0 ? guardar(v) : "";
}

/// The only way for a window to learn that another one has closed the year.
std::string Simulacion::reabrir(Ventana& v) {
    v.p.reset();
    modelo_.desbloquear(v.usuario);
    v.p = std::make_unique<Pantalla>(escena_.conexion, v.carpeta, v.usuario);
    v.p->abrir();
    v.p->elegir("cmblibro", "CONTABLES");
    v.creido = modelo_.periodo;
    limpiar(v);
    v.c.concepto = "Inicio";
    v.p->f.txtconcepto.SetText(v.c.concepto);
    return "";
}

std::string Simulacion::recuperar(Ventana& v) {
    const auto libres = borradores_libres(v.p->f);
    std::optional<ContenidoBorrador> b;
    if (!libres.empty()) b = ArchivoBorrador::tomar(libres[0].archivo)->leer();
    v.p->tecla("ctrl+r");
    if (!b) return "No hay un comprobante sin grabar que recuperar";
    const auto campo = [&](const char* nombre) {
        const auto i = b->campos.find(nombre);
        return i == b->campos.end() ? std::string() : i->second;
    };
    std::string esperado;
    const ContenidoPlano c = contenido(*b);
    if (campo("guardado") == "1") {
        const ClavePlana clave{fecha_iso(*leer_fecha(campo("guardado.f_comp"))),
                               recortar(campo("guardado.documento")), recortar(campo("guardado.num_docum"))};
        if (modelo_.comprobantes.contains(clave)) {
            esperado = cargar(v, clave);
            if (v.solo_lectura || v.estado != "P") return esperado; // the draft waits
            if (!v.cargado.igual(huellas_[campo("guardado.huella")]))
                esperado = "Este comprobante se grabó otra vez después de su borrador";
        } else {
            limpiar(v);
            esperado = "El comprobante de este borrador ya no está en la base";
        }
    } else {
        limpiar(v);
    }
    v.c = c;
    v.cierre = campo("cierre_generado") == "1";
    if (campo("cortado") == "1") v.cortado_cheque = campo("cortado.cheque");
    if (!vistos_.contains({v.usuario, mostrado(c)})) return "a draft of what he has seen";
    return esperado;
}

} // namespace quorvel::fallas
