#pragma once
#include "driver/driver.h"
#include "host/objeto_host.h"
#include "platform/ui/control.h"
#include "platform/ui/escritorio.h"

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace quorvel::driver {

using Json = nlohmann::ordered_json;

/// A request that cannot be carried out; nothing has changed.
class Rechazada : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class Espera { reposo, pregunta, abrir, guardar };

/// A question or a file dialog that waits for its answer.
struct Pendiente {
    Espera que;
    const ui::FileRequest* archivo = nullptr; ///< of a file dialog
    bool contestada = false;
    ui::Answer respuesta = ui::Answer::no;
    std::optional<std::string> ruta = {};
};

/// One created object with its sessions and services.
struct Objeto {
    std::unique_ptr<clsConexion> db, reportdb;
    std::unique_ptr<Reloj> reloj;
    std::unique_ptr<ReportPrinter> impresor;
    std::unique_ptr<ObjetoHost> objeto;
};

/// Reads requests, carries them out and writes replies. It is the desktop of the forms too: where a person
/// would have to act, it answers the request under way and goes on reading.
class Conversacion final : public ui::Escritorio {
public:
    Conversacion(std::istream& entrada, std::ostream& salida, const OpcionesDriver& opciones);
    ~Conversacion() override;
    int conversar();

    // For the operations.
    std::map<int, Objeto> objetos;
    const OpcionesDriver& opciones;
    std::vector<std::string> impresos;
    [[nodiscard]] Objeto& objeto(const Json& pedido);
    [[nodiscard]] Espera espera() const { return pendiente_ == nullptr ? Espera::reposo : pendiente_->que; }
    void responder(ui::Answer respuesta);
    void responder_archivo(std::optional<std::string> ruta);
    void terminar() { fin_ = true; }
    /// A person can reach the form: no modal form covers it.
    [[nodiscard]] bool alcanzable(const ui::Form& forma) const;

    // Desktop.
    void open_with(const std::string& path) override;
    void busy(bool) override {}
    void later(std::function<void()> what) override { despues_.push_back(std::move(what)); }

protected:
    ui::Answer on_message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                          const std::string& title) override;
    std::optional<std::string> on_ask_file(const ui::FileRequest& request) override;
    bool on_progress(const std::string&, long, long) override { return true; }
    void on_open(ui::Form& form, bool modal) override;
    void on_close(ui::Form& form) override { std::erase(modales_, &form); }
    void wait(ui::Form& form) override;

private:
    /// Reads and carries out until the condition holds or the input ends; a reply is owed on entry when a
    /// request is under way.
    void leer_hasta(const std::function<bool()>& listo);
    void atender(const std::string& linea);
    void esperar(Pendiente& pendiente);
    [[nodiscard]] Pendiente& pendiente(bool archivo, const char* si_falta);
    void contestar(Json respuesta);
    /// The reply to the request under way: what it gave, once nothing waits for its end any more.
    void contestar_ok() { contestar(std::exchange(dado_, Json{{"ok", true}})); }
    [[nodiscard]] Json situacion();
    std::istream& entrada_;
    std::ostream& salida_;
    Json mensajes_ = Json::array(), abiertos_ = Json::array();
    Pendiente* pendiente_ = nullptr;  ///< of what waits on top, a form has none
    Json dado_{{"ok", true}};         ///< what the last request gave
    int turno_ = 0;                   ///< of the last request read
    bool fin_ = false, debe_ = false; ///< debe_: a request waits for its reply
    std::vector<const ui::Form*> modales_;
    std::vector<std::function<void()>> despues_; ///< to be done when the request under way is
};

/// Carries out a request; what it gives goes into the reply. @throws Rechazada, and nothing has changed
void ejecutar(Conversacion& c, const Json& pedido, Json& respuesta);
/// Everything on a form, or one control of it. @throws Rechazada
[[nodiscard]] Json estado_forma(const ui::Form& forma);
[[nodiscard]] Json estado_control(const ui::Control& control);

} // namespace quorvel::driver
