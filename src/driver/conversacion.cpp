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
        while (!despues_.empty())
            for (const auto& hacer : std::exchange(despues_, {})) hacer();
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
    s["waiting"] = nombre(espera(), forma != nullptr);
    if (forma != nullptr) s["form"] = forma->name();
    if (forma != nullptr && forma->active_control() != nullptr) s["focus"] = forma->active_control()->name();
    if (const auto* a = pendiente_ == nullptr ? nullptr : pendiente_->archivo)
        s["file"] = {{"title", a->title}, {"filter", a->filter}, {"name", a->name}};
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

Pendiente& Conversacion::pendiente(bool archivo, const char* si_falta) {
    if (pendiente_ == nullptr || (pendiente_->archivo != nullptr) != archivo) throw Rechazada(si_falta);
    pendiente_->contestada = true;
    return *pendiente_;
}

void Conversacion::responder(ui::Answer respuesta) {
    pendiente(false, "no question waits").respuesta = respuesta;
}

void Conversacion::responder_archivo(std::optional<std::string> ruta) {
    pendiente(true, "no file dialog waits").ruta = std::move(ruta);
}

void Conversacion::esperar(Pendiente& p) {
    on_call_off([&p] { p.contestada = true; });
    Pendiente* const debajo = std::exchange(pendiente_, &p);
    leer_hasta([&p] { return p.contestada; });
    pendiente_ = debajo;
}

ui::Answer Conversacion::on_message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                                    const std::string& title) {
    const bool pregunta = buttons == ui::Buttons::yes_no;
    mensajes_.push_back({{"text", text},
                         {"icon", nombre(icon)},
                         {"title", title},
                         {"buttons", pregunta ? Json{"yes", "no"} : Json{"ok"}}});
    if (!pregunta) return ui::Answer::ok;
    Pendiente p{.que = Espera::pregunta};
    esperar(p);
    return p.respuesta;
}

std::optional<std::string> Conversacion::on_ask_file(const ui::FileRequest& request) {
    Pendiente p{.que = request.save ? Espera::guardar : Espera::abrir, .archivo = &request};
    esperar(p);
    return p.ruta;
}

void Conversacion::open_with(const std::string& path) { abiertos_.push_back(path); }

void Conversacion::wait(ui::Form& form) {
    Pendiente* const debajo = std::exchange(pendiente_, nullptr);
    leer_hasta([&form] { return !form.visible(); });
    pendiente_ = debajo;
    if (form.visible()) form.Hide(); // the input has ended: nobody will choose any more
}

} // namespace driver

} // namespace quorvel
