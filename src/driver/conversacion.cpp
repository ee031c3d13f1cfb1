#include "driver/conversacion.h"

#include "driver/controles.h"
#include "screen/frmQuorvel.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace quorvel {

int run_driver(std::istream& entrada, std::ostream& salida, const OpcionesDriver& opciones) {
    return driver::Conversacion(entrada, salida, opciones).conversar();
}

namespace driver {

namespace {

const char* nombre(ui::Icon icono) {
    static constexpr const char* NOMBRES[] = {"critical", "warning", "information", "question"};
    return NOMBRES[static_cast<std::size_t>(icono)];
}
const char* nombre(Espera espera, bool forma) {
    static constexpr const char* NOMBRES[] = {"idle", "question", "openfile", "savefile"};
    return espera == Espera::reposo && forma ? "form" : NOMBRES[static_cast<std::size_t>(espera)];
}

/// Written back as a text, as some fields are, a value takes a call for each of its levels.
Json leer_pedido(const std::string& linea) {
    constexpr int HONDURA = 32;
    return Json::parse(linea, [](int hondura, Json::parse_event_t, const Json&) {
        if (hondura > HONDURA) throw Rechazada("a request is nested too deep");
        return true;
    });
}

} // namespace

Conversacion::Conversacion(std::istream& entrada, std::ostream& salida, const OpcionesDriver& opciones_)
    : opciones(opciones_), entrada_(entrada), salida_(salida) {}

Conversacion::~Conversacion() { objetos.clear(); }

int Conversacion::conversar() {
    leer_hasta([] { return false; });
    for (auto& [id, o] : objetos) o.objeto->pantalla().Unload();
    if (debe_) contestar_ok();
    return 0;
}

void Conversacion::leer_hasta(const std::function<bool()>& listo) {
    if (debe_) contestar_ok(); // the system waits for input again
    std::string linea;
    while (!fin_ && !listo()) {
        if (!std::getline(entrada_, linea)) {
            fin_ = true;
            break;
        }
        if (linea.find_first_not_of(" \t\r") == std::string::npos) continue;
        atender(linea);
        // What ended this wait is answered when the outer procedure has ended, or waits itself.
        if (debe_ && !fin_ && !listo()) contestar_ok();
    }
}

void Conversacion::atender(const std::string& linea) {
    const int turno = ++turno_;
    debe_ = true;
    dado_ = Json{{"ok", true}};
    try {
        const Json pedido = leer_pedido(linea);
        if (!pedido.is_object()) throw Rechazada("a request is a JSON object");
        Json respuesta{{"ok", true}};
        ejecutar(*this, pedido, respuesta);
        if (turno == turno_) dado_ = std::move(respuesta);
    } catch (const std::exception& e) {
        if (debe_) contestar({{"ok", false}, {"error", e.what()}});
    }
}

void Conversacion::on_open(ui::Form& form, bool modal) {
    if (modal) modales_.push_back(&form);
}

bool Conversacion::alcanzable(const ui::Form& forma) const {
    return &forma == top() || std::find(modales_.begin(), modales_.end(), top()) == modales_.end();
}

Json Conversacion::situacion() {
    Json s;
    const ui::Form* forma = top();
    s["waiting"] = nombre(espera_, forma != nullptr);
    if (forma != nullptr) s["form"] = forma->name();
    if (forma != nullptr && forma->active_control() != nullptr) s["focus"] = forma->active_control()->name();
    if (dialogo_ != nullptr)
        s["file"] = {{"title", dialogo_->title}, {"filter", dialogo_->filter}, {"name", dialogo_->name}};
    return s;
}

void Conversacion::contestar(Json respuesta) {
    debe_ = false;
    respuesta.update(situacion());
    respuesta["messages"] = std::exchange(mensajes_, Json::array());
    respuesta["printed"] = std::exchange(impresos, {});
    if (!abiertos_.empty()) respuesta["opened"] = std::exchange(abiertos_, Json::array());
    // Texts of a database may hold bytes that are no UTF-8.
    salida_ << respuesta.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n' << std::flush;
}

Objeto& Conversacion::objeto(const Json& pedido) {
    if (objetos.empty()) throw Rechazada("no object has been created");
    const auto it =
        pedido.contains("object") ? objetos.find(entero(pedido, "object")) : std::prev(objetos.end());
    if (it == objetos.end()) throw Rechazada("unknown object");
    return it->second;
}

void Conversacion::responder(ui::Answer respuesta) {
    if (espera_ != Espera::pregunta) throw Rechazada("no question waits");
    respuesta_ = respuesta;
}

void Conversacion::responder_archivo(std::optional<std::string> ruta) {
    if (espera_ != Espera::abrir && espera_ != Espera::guardar) throw Rechazada("no file dialog waits");
    archivo_ = std::move(ruta);
}

ui::Answer Conversacion::message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                                 const std::string& title) {
    const bool pregunta = buttons == ui::Buttons::yes_no;
    mensajes_.push_back({{"text", text},
                         {"icon", nombre(icon)},
                         {"title", title},
                         {"buttons", pregunta ? Json{"yes", "no"} : Json{"ok"}}});
    if (!pregunta) return ui::Answer::ok;
    const Espera antes = std::exchange(espera_, Espera::pregunta);
    leer_hasta([this] { return respuesta_.has_value(); });
    espera_ = antes;
    return std::exchange(respuesta_, std::nullopt).value_or(ui::Answer::no);
}

std::optional<std::string> Conversacion::choose_file(const ui::FileRequest& request) {
    const Espera antes = std::exchange(espera_, request.save ? Espera::guardar : Espera::abrir);
    const auto* const dialogo_antes = std::exchange(dialogo_, &request);
    leer_hasta([this] { return archivo_.has_value(); });
    espera_ = antes;
    dialogo_ = dialogo_antes;
    return std::exchange(archivo_, std::nullopt).value_or(std::nullopt);
}

void Conversacion::open_with(const std::string& path) { abiertos_.push_back(path); }

void Conversacion::wait(ui::Form& form) {
    leer_hasta([&form] { return !form.visible(); });
    if (form.visible()) form.Hide(); // the input has ended: nobody will choose any more
}

} // namespace driver

} // namespace quorvel
