#include "host/clsQuorvelRem.h"

#include "host/clases.h"
#include "host/sesion_host.h"
#include "screen/campos.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <array>

namespace quorvel {

namespace {

class QuorvelRem final : public SesionHost<clsQuorvelRem> {
public:
    explicit QuorvelRem(Servicios s) : SesionHost(std::move(s)) { nombrar_miembros(); }

    Estado LoadForm() override {
        return intentar([this] {
            entregar_sesion().glbremuneracion = true;
            pantalla().Load();
        });
    }
    Estado ShowForm() override {
        return intentar([this] {
            pantalla().require_showable(true); // before its voucher is touched
            frmQuorvel& f = pantalla_cargada();
            f.txtconcepto.SetText(concepto_);
            f.cmblibro.SetListIndex(0);
            f.ShowModal();
        });
    }
    Estado grd_agregar(const std::string& cuenta, const std::string& auxiliar, const std::string& debe,
                       const std::string& haber, const std::string& glosa) override {
        return intentar([&] {
            frmQuorvel& f = pantalla_cargada();
            f.grdDetalle.AddItem(
                fila_texto({"1", cuenta, auxiliar, debe, haber, primeros(glosa, LARGO_GLOSA)}));
            const Totales& t = f.estado.totales;
            mostrar_totales(f, {t.debe + Decimal::leer(debe), t.haber + Decimal::leer(haber)});
        });
    }
    Estado grd_borrar(const std::string&, const std::string&, const std::string&, const std::string&,
                      const std::string&) override {
        return intentar([this] {
            frmQuorvel& f = pantalla_cargada();
            const Totales totales = f.estado.totales;
            f.grdDetalle.Clear(); // an emptied grid sets the totals to 0; the host counts on them
            mostrar_totales(f, totales);
        });
    }
    Estado get_gstrconcepto(std::string* v) override { return leer(v, concepto_); }
    Estado let_gstrconcepto(const std::string& v) override { return poner(concepto_, v); }

private:
    using ConCincoTextos = Estado (QuorvelRem::*)(const std::string&, const std::string&, const std::string&,
                                                  const std::string&, const std::string&);
    Miembro linea(const char* nombre, ConCincoTextos metodo) {
        return {nombre,
                5,
                [this, metodo](std::span<const Variant> a) {
                    std::array<std::string, 5> t;
                    for (std::size_t i = 0; i < t.size(); ++i)
                        if (const Estado e = como_texto(a[i], t[i]); fallo(e)) return e;
                    return (this->*metodo)(t[0], t[1], t[2], t[3], t[4]);
                },
                {},
                {}};
    }
    void nombrar_miembros() {
        miembros_.agregar_sesion(*this);
        miembros_.agregar({"ShowForm", 0, [this](auto) { return ShowForm(); }, {}, {}});
        miembros_.agregar(linea("grd_agregar", &QuorvelRem::grd_agregar));
        miembros_.agregar(linea("grd_borrar", &QuorvelRem::grd_borrar));
        miembros_.agregar({"UnloadForm", 0, [this](auto) { return UnloadForm(); }, {}, {}});
        miembros_.agregar({"LoadForm", 0, [this](auto) { return LoadForm(); }, {}, {}});
        miembros_.agregar({"gstrconcepto",
                           0,
                           {},
                           [this](Variant& v) {
                               v = concepto_;
                               return S_OK;
                           },
                           [this](const Variant& v) { return como_texto(v, concepto_); }});
    }
    std::string concepto_;
};

} // namespace

std::unique_ptr<ObjetoHost> crear_clsQuorvelRem(Servicios servicios) {
    return std::make_unique<QuorvelRem>(std::move(servicios));
}

} // namespace quorvel
