#pragma once
#include "demo/demo_diario.h"
#include "demo/demo_maestros.h"

#include <random>

namespace quorvel::demo {

/// What the demonstration company does in a month. Equal histories give equal vouchers: the dice are its own.
class NegocioDemo {
public:
    NegocioDemo(DiarioDemo& diario, const MaestrosDemo& maestros) : diario_(diario), m_(maestros) {}
    /// Books the vouchers of a month that are dated up to a day.
    void mes_de(std::chrono::year_month mes, Fecha hasta);
    /// What the owners brought in on the first day.
    void aporte_inicial(Fecha dia);
    [[nodiscard]] int usuario() { return entre(1, 3); }

private:
    struct Abierto { ///< an invoice that waits for its payment
        std::string auxiliar, num_ref;
        std::int64_t total = 0;
    };
    [[nodiscard]] int entre(int desde, int hasta);
    [[nodiscard]] Fecha dia(int d) const;
    void ventas();
    void boletas();
    void compras();
    void compra(const GastoDemo& gasto);
    void activo_fijo();
    void honorarios();
    void cobranzas();
    void pagos();
    void remuneraciones();
    void impuestos();
    void retiros();
    void cierre_de_mes();
    void pagar_saldos(int d, const std::string& documento, const std::string& concepto,
                      const std::vector<std::string>& cuentas);
    AsientoDemo& nuevo(int d, const char* documento, const char* libro, const std::string& concepto);
    static void con_documento(AsientoDemo& a, const char* doc_libro, const std::string& num_ref,
                              const AuxiliarDemo& persona);

    DiarioDemo& diario_;
    const MaestrosDemo& m_;
    std::mt19937 dado_{20240101};
    std::chrono::year_month mes_{};
    std::vector<AsientoDemo> asientos_;
    std::vector<Abierto> por_cobrar_, por_pagar_, honorarios_;
    int factura_ = 4120, boleta_ = 118300, nota_ = 210, cheque_ = 4511, numero_ajeno_ = 30500;
    int meses_ = 0;
};

} // namespace quorvel::demo
