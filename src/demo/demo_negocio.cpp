#include "demo/demo_negocio.h"

#include "voucher/iva.h"

#include <algorithm>

namespace quorvel::demo {
namespace {

using namespace std::chrono;

std::string nombre_mes(year_month m) {
    static const char* const NOMBRES[] = {"ENERO",      "FEBRERO", "MARZO",     "ABRIL",
                                          "MAYO",       "JUNIO",   "JULIO",     "AGOSTO",
                                          "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE"};
    return std::string(NOMBRES[static_cast<unsigned>(m.month()) - 1]) + " " +
           std::to_string(static_cast<int>(m.year()));
}

LineaDemo debe(const std::string& centro, std::int64_t monto, const std::string& auxiliar = "",
               const std::string& num_ref = "") {
    return {centro, monto, 0, auxiliar, num_ref, "", "", "", ""};
}
LineaDemo haber(const std::string& centro, std::int64_t monto, const std::string& auxiliar = "",
                const std::string& num_ref = "") {
    return {centro, 0, monto, auxiliar, num_ref, "", "", "", ""};
}
LineaDemo en(LineaDemo linea, const std::string& centro_costo) {
    linea.centro2 = centro_costo;
    return linea;
}

/// Tax retained on fees in ten-thousandths: the rate rises in steps by law.
int retencion_honorarios(int anio) {
    struct Tramo {
        int desde, tasa;
    };
    static constexpr Tramo TRAMOS[] = {{2028, 1700}, {2027, 1600}, {2026, 1525},
                                       {2025, 1450}, {2024, 1375}, {2023, 1300}};
    for (const Tramo& t : TRAMOS)
        if (anio >= t.desde) return t.tasa;
    return 1225;
}

constexpr const char* LOCALES[] = {"201001", "201002", "202001", "202002"};
constexpr const char* BANCO = "101003";

} // namespace

int NegocioDemo::entre(int desde, int hasta) {
    return desde + static_cast<int>(dado_() % static_cast<unsigned>(hasta - desde + 1));
}

Fecha NegocioDemo::dia(int d) const {
    const Fecha ultimo{mes_ / last};
    const Fecha f = static_cast<unsigned>(d) > static_cast<unsigned>(ultimo.day()) ? ultimo : mes_ / d;
    const bool domingo = weekday{sys_days{f}} == Sunday;
    return domingo ? Fecha{sys_days{f} + days{f == ultimo ? -1 : 1}} : f;
}

AsientoDemo& NegocioDemo::nuevo(int d, const char* documento, const char* libro,
                                const std::string& concepto) {
    AsientoDemo& a = asientos_.emplace_back();
    a.fecha = dia(d);
    a.documento = documento;
    a.libro = libro;
    a.doc_libro = " ";
    a.concepto = concepto;
    return a;
}

void NegocioDemo::con_documento(AsientoDemo& a, const char* doc_libro, const std::string& num_ref,
                                const AuxiliarDemo& persona) {
    a.doc_libro = doc_libro;
    a.num_ref = num_ref;
    a.rut = persona.rut;
    a.nombre = persona.nombre;
    a.fecha_pago = Fecha{sys_days{a.fecha} + days{30}};
}

void NegocioDemo::aporte_inicial(Fecha fecha) {
    AsientoDemo a;
    a.fecha = fecha;
    a.documento = "001";
    a.libro = "CONTABLES";
    a.doc_libro = " ";
    a.concepto = "ASIENTO APERTURA " + std::to_string(anio(fecha));
    a.apertura = true;
    a.lineas = {debe("101001", 350000),   debe(BANCO, 24800000),    debe("106001", 31500000),
                debe("110003", 8200000),  debe("110004", 6400000),  debe("110005", 3900000),
                debe("110006", 27500000), debe("104006", 3700000),  haber("111005", 5500000),
                haber("111004", 1300000), haber("207001", 18000000)};
    std::int64_t capital = 0;
    for (const LineaDemo& l : a.lineas) capital += l.debe - l.haber;
    a.lineas.push_back(haber("301001", capital));
    diario_.asentar(a, 1);
}

void NegocioDemo::ventas() {
    const std::vector<AuxiliarDemo> clientes = m_.de_tipo("CL");
    for (int i = 0; i < 4; ++i) {
        const AuxiliarDemo& c =
            clientes[static_cast<std::size_t>(entre(0, static_cast<int>(clientes.size()) - 1))];
        const std::string folio = std::to_string(++factura_);
        const std::int64_t neto = entre(90, 420) * 10000LL, iva = iva_en_pesos(neto);
        AsientoDemo& a = nuevo(entre(2, 27), "003", "VENTAS", "VENTA FACTURA " + folio + " " + c.nombre);
        con_documento(a, "F. ELECTRONICA", folio, c);
        a.neto = neto;
        std::int64_t otro = 0;
        a.lineas = {haber("401001", neto), haber("203001", iva)};
        if (i == 0) {
            otro = neto / 10;
            a.codigo_impuesto = "027";
            a.tasa_impuesto = m_.tasas.at("027");
            LineaDemo l = haber("203002", otro);
            l.codigo_impuesto = a.codigo_impuesto;
            l.tasa_impuesto = a.tasa_impuesto;
            a.lineas.push_back(l);
        }
        a.lineas.push_back(debe("103001", neto + iva + otro, c.codigo));
        por_cobrar_.push_back({c.codigo, folio, neto + iva + otro});
    }
    if (meses_ % 3 == 1 && !por_cobrar_.empty()) {
        Abierto& factura = por_cobrar_.front();
        const AuxiliarDemo& c = m_.auxiliar(factura.auxiliar);
        const std::int64_t neto = entre(5, 20) * 10000LL, iva = iva_en_pesos(neto);
        const std::string folio = std::to_string(++nota_);
        AsientoDemo& a = nuevo(24, "003", "VENTAS", "DEVOLUCION DE MERCADERIA, FACTURA " + factura.num_ref);
        con_documento(a, "N.C. ELECTRONICA", folio, c);
        a.neto = neto;
        a.lineas = {debe("401001", neto), debe("203001", iva),
                    haber("103001", neto + iva, c.codigo, factura.num_ref)};
        factura.total -= neto + iva;
    }
}

void NegocioDemo::boletas() {
    static const AuxiliarDemo VARIOS{"", "", "66.666.666-6", "CLIENTES VARIOS"};
    for (int i = 0; i < 2; ++i) {
        const std::int64_t total = entre(640, 1080) * 10000LL, neto = (total * 100 + 59) / 119;
        boleta_ += entre(700, 1300);
        const char* local = LOCALES[static_cast<std::size_t>(i * 2 + meses_ % 2)];
        AsientoDemo& a = nuevo(14 + i * 14, "003", "VENTAS", "VENTAS CON BOLETA DEL PERIODO");
        con_documento(a, "B. ELECTRONICA", std::to_string(boleta_), VARIOS);
        a.neto = neto;
        a.lineas = {en(haber("401003", neto), local), haber("203001", total - neto), debe("103002", total)};
        const std::int64_t comision = total * 3 / 400;
        AsientoDemo& deposito = nuevo(15 + i * 15, "009", "INGRESOS", "DEPOSITO DE VENTAS CON BOLETA");
        deposito.doc_libro = "INGRESO";
        deposito.lineas = {debe(BANCO, total - comision), debe("505003", comision), haber("103002", total)};
    }
}

void NegocioDemo::compra(const GastoDemo& g) {
    const AuxiliarDemo& p = m_.auxiliar(g.proveedor);
    numero_ajeno_ += entre(3, 90);
    const std::string folio = std::to_string(numero_ajeno_);
    const std::int64_t neto =
        g.maximo - g.minimo < 10 ? g.minimo : entre(g.minimo / 1000, g.maximo / 1000) * 1000LL;
    const std::int64_t iva = iva_en_pesos(neto);
    AsientoDemo& a = nuevo(entre(2, 26), "002", "COMPRAS", g.glosa);
    con_documento(a, "F. ELECTRONICA", folio, p);
    a.neto = neto;
    a.lineas = {en(debe(g.cuenta, neto), g.centro2), debe("109001", iva)};
    std::int64_t otro = 0;
    if (!g.impuesto.empty()) {
        a.codigo_impuesto = g.impuesto;
        a.tasa_impuesto = m_.tasas.at(g.impuesto);
        otro = static_cast<std::int64_t>(static_cast<double>(neto) * std::stod(a.tasa_impuesto) / 100 + 0.5);
        LineaDemo l = debe("109002", otro);
        l.codigo_impuesto = a.codigo_impuesto;
        l.tasa_impuesto = a.tasa_impuesto;
        a.lineas.push_back(l);
    }
    a.lineas.push_back(haber("201001", neto + iva + otro, p.codigo));
    if (entre(1, 60) == 1)
        a.estado = "X"; // keyed in twice, then annulled
    else
        por_pagar_.push_back({p.codigo, folio, neto + iva + otro});
}

void NegocioDemo::compras() {
    for (const GastoDemo& g : m_.gastos)
        for (int i = 0; i < g.veces; ++i)
            if (entre(1, 100) <= (g.cuenta == "501002" ? 88 : 60)) compra(g);
    if (meses_ % 6 == 3) activo_fijo();
}

void NegocioDemo::activo_fijo() {
    const auto proveedores = m_.de_tipo("PR");
    const AuxiliarDemo& p = proveedores[proveedores.size() - 2];
    const std::int64_t neto = entre(60, 140) * 10000LL, iva = iva_en_pesos(neto);
    const std::string folio = std::to_string(++numero_ajeno_);
    AsientoDemo& a = nuevo(18, "002", "COMPRAS", "ESTANTERIAS Y MOBILIARIO PARA LOCALES");
    con_documento(a, "F. ELECTRONICA", folio, p);
    a.neto = neto;
    a.activo_fijo = true;
    a.iva_activo_fijo = iva;
    a.lineas = {debe("110004", neto), debe("109001", iva), haber("201001", neto + iva, p.codigo)};
    por_pagar_.push_back({p.codigo, folio, neto + iva});
}

void NegocioDemo::honorarios() {
    const auto profesionales = m_.de_tipo("PS");
    const AuxiliarDemo& p =
        profesionales[static_cast<std::size_t>(entre(0, 5))]; // the last two are the partners
    const std::int64_t bruto = entre(25, 80) * 10000LL;
    const std::int64_t retenido =
        (bruto * retencion_honorarios(static_cast<int>(mes_.year())) + 5000) / 10000;
    const std::string folio = std::to_string(100 + meses_ * 3 + entre(0, 2));
    AsientoDemo& a = nuevo(entre(20, 27), "004", "RETENCIONES", "HONORARIOS " + p.nombre);
    con_documento(a, "B. ELECTRONICA", folio, p);
    a.lineas = {en(debe("502006", bruto), "101001"), haber("204002", retenido),
                haber("204001", bruto - retenido, p.codigo)};
    honorarios_.push_back({p.codigo, folio, bruto - retenido});
}

void NegocioDemo::cobranzas() {
    // The front of the list are invoices of earlier months; the last ones stay open.
    for (int i = 0; i < 4 && por_cobrar_.size() > 5; ++i) {
        const Abierto f = por_cobrar_.front();
        por_cobrar_.erase(por_cobrar_.begin());
        const AuxiliarDemo& c = m_.auxiliar(f.auxiliar);
        AsientoDemo& a = nuevo(5 + i * 6, "009", "INGRESOS", "COBRO FACTURA " + f.num_ref + " " + c.nombre);
        con_documento(a, "INGRESO", f.num_ref, c);
        LineaDemo banco = debe(BANCO, f.total);
        banco.conciliado = meses_ < 11 ? "1" : "";
        a.lineas = {banco, haber("103001", f.total, f.auxiliar, f.num_ref)};
    }
}

void NegocioDemo::pagos() {
    for (int i = 0; i < 3 && por_pagar_.size() > 4; ++i) {
        const std::size_t cuantos = std::min<std::size_t>(5, por_pagar_.size() - 4);
        AsientoDemo& a = nuevo(6 + i * 9, "008", "EGRESOS", "PAGO A PROVEEDORES");
        std::int64_t total = 0;
        for (std::size_t k = 0; k < cuantos; ++k) {
            const Abierto f = por_pagar_.front();
            por_pagar_.erase(por_pagar_.begin());
            a.lineas.push_back(debe("201001", f.total, f.auxiliar, f.num_ref));
            total += f.total;
        }
        const AuxiliarDemo& p = m_.auxiliar(a.lineas[0].auxiliar);
        con_documento(a, "EGRESO", a.lineas[0].num_ref, p);
        LineaDemo banco = haber(BANCO, total);
        banco.conciliado = meses_ < 11 ? "1" : "";
        a.lineas.push_back(banco);
        if (a.lineas.size() == 2 || i == 0) { // one payee, one cheque
            const std::string numero = std::to_string(++cheque_);
            a.cheque = ChequeDemo{std::string(7 - numero.size(), '0') + numero, p.nombre};
        }
    }
    if (honorarios_.size() > 1) {
        const Abierto h = honorarios_.front();
        honorarios_.erase(honorarios_.begin());
        const AuxiliarDemo& p = m_.auxiliar(h.auxiliar);
        AsientoDemo& a = nuevo(8, "008", "EGRESOS", "PAGO BOLETA DE HONORARIOS " + h.num_ref);
        con_documento(a, "EGRESO", h.num_ref, p);
        a.lineas = {debe("204001", h.total, h.auxiliar, h.num_ref), haber(BANCO, h.total)};
    }
}

void NegocioDemo::pagar_saldos(int d, const std::string& documento, const std::string& concepto,
                               const std::vector<std::string>& cuentas) {
    std::vector<LineaDemo> lineas;
    std::int64_t total = 0;
    for (const std::string& cuenta : cuentas) {
        const std::int64_t adeudado = -diario_.saldo(cuenta);
        if (adeudado <= 0) continue;
        lineas.push_back(debe(cuenta, adeudado));
        total += adeudado;
    }
    if (lineas.empty()) return;
    AsientoDemo& a = nuevo(d, documento.c_str(), "EGRESOS", concepto);
    a.doc_libro = "EGRESO";
    a.lineas = lineas;
    a.lineas.push_back(haber(BANCO, total));
}

void NegocioDemo::remuneraciones() {
    pagar_saldos(9, "008", "PAGO DE COTIZACIONES PREVISIONALES", {"205002", "205003", "205004", "205005"});
    pagar_saldos(3, "008", "PAGO DE REMUNERACIONES DEL MES ANTERIOR", {"205001"});
    const std::int64_t sueldos = 5150000 + entre(0, 40) * 5000LL;
    const std::int64_t afp = sueldos * 115 / 1000, salud = sueldos * 7 / 100, cesantia = sueldos * 3 / 100;
    const std::int64_t mutual = sueldos * 95 / 10000, aporte = sueldos * 24 / 1000 + mutual;
    AsientoDemo& a = nuevo(28, "005", "CONTABLES", "LIBRO DE REMUNERACIONES " + nombre_mes(mes_));
    a.subsistema = "02";
    const std::int64_t locales = sueldos * 6 / 10, bodega = sueldos * 2 / 10;
    a.lineas = {en(debe("502001", locales), "201001"),
                en(debe("502001", bodega), "301001"),
                en(debe("502001", sueldos - locales - bodega), "101002"),
                en(debe("502005", aporte), "101003"),
                haber("205002", afp),
                haber("205003", salud),
                haber("205004", cesantia),
                haber("205005", mutual),
                haber("205001", sueldos + aporte - afp - salud - cesantia - mutual)};
}

void NegocioDemo::impuestos() {
    const std::int64_t ppm = -diario_.saldo("203001") / TASA_IVA; // one per cent of last month's taxed sales
    if (ppm <= 0) return;
    AsientoDemo& a = nuevo(12, "008", "EGRESOS", "DECLARACION MENSUAL DE IMPUESTOS F29");
    a.doc_libro = "EGRESO";
    std::int64_t total = ppm;
    a.lineas = {debe("108001", ppm)};
    for (const char* cuenta : {"203001", "203002", "204002", "109001", "109002", "108002"}) {
        const std::int64_t saldo = diario_.saldo(cuenta);
        if (saldo == 0) continue;
        a.lineas.push_back(saldo > 0 ? haber(cuenta, saldo) : debe(cuenta, -saldo));
        total -= saldo;
    }
    a.lineas.push_back(total >= 0 ? haber(BANCO, total) : debe("108002", -total));
}

void NegocioDemo::retiros() {
    const auto socios = m_.de_tipo("PS");
    const AuxiliarDemo& s = socios[socios.size() - 1 - static_cast<std::size_t>(meses_ / 2 % 2)];
    const std::int64_t monto = entre(8, 15) * 100000LL;
    AsientoDemo& a = nuevo(25, "008", "RET. SOCIO", "RETIRO " + s.nombre);
    con_documento(a, "EGRESO", std::to_string(40 + meses_), s);
    a.lineas = {debe("303001", monto, s.codigo), haber(BANCO, monto)};
}

void NegocioDemo::cierre_de_mes() {
    std::int64_t comprado = 0, vendido = 0;
    for (const AsientoDemo& a : asientos_)
        for (const LineaDemo& l : a.lineas) {
            if (a.estado == "P" && l.centro == "501002") comprado += l.debe;
            if (l.centro == "401001" || l.centro == "401003") vendido += l.haber - l.debe;
        }
    const std::int64_t costo = vendido * 46 / 100;
    AsientoDemo& existencias = nuevo(31, "001", "CONTABLES", "COSTO DE VENTAS " + nombre_mes(mes_));
    existencias.lineas = {debe("501001", costo), haber("106001", costo)};
    if (comprado > 0) {
        existencias.lineas.push_back(debe("106001", comprado));
        existencias.lineas.push_back(haber("501002", comprado));
    }
    AsientoDemo& depreciacion = nuevo(31, "001", "CONTABLES", "DEPRECIACION " + nombre_mes(mes_));
    depreciacion.lineas = {en(debe("504001", 412000), "301002"), en(debe("504001", 158000), "201001"),
                           haber("111005", 412000), haber("111003", 93000), haber("111004", 65000)};
    AsientoDemo& banco = nuevo(30, "001", "CONTABLES", "INTERESES Y COMISIONES BANCARIAS");
    const std::int64_t comision = entre(38, 62) * 1000LL, interes = entre(110, 135) * 1000LL;
    banco.lineas = {debe("505002", comision), debe("505001", interes), haber(BANCO, comision + interes)};
    if (meses_ >= 12 && meses_ % 3 == 2) { // a norm of its own, in the open year
        AsientoDemo& deterioro = nuevo(31, "001", "CONTABLES", "DETERIORO DE DEUDORES " + nombre_mes(mes_));
        deterioro.ifrs = "2";
        deterioro.lineas = {debe("504003", 185000), haber("103007", 185000)};
    }
}

void NegocioDemo::mes_de(year_month mes, Fecha hasta) {
    mes_ = mes;
    asientos_.clear();
    // Payments first: they settle what earlier months left open.
    cobranzas();
    pagos();
    remuneraciones();
    impuestos();
    ventas();
    boletas();
    compras();
    honorarios();
    if (meses_ % 2 == 1) retiros();
    cierre_de_mes();
    std::stable_sort(asientos_.begin(), asientos_.end(),
                     [](const AsientoDemo& a, const AsientoDemo& b) { return a.fecha < b.fecha; });
    for (const AsientoDemo& a : asientos_)
        if (a.fecha <= hasta) diario_.asentar(a, usuario());
    ++meses_;
}

} // namespace quorvel::demo
