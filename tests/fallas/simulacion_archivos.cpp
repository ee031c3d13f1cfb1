// The attached files of the random run: what was given is where a row or a screen says it is.
#include "fallas/simulacion.h"
#include "platform/files/attachments.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace quorvel::fallas {

namespace {

std::string leer_archivo(const std::filesystem::path& ruta) {
    std::ifstream in(ruta);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

std::string Simulacion::archivo_mal(const Archivo& a) {
    if (quitados_.contains(a)) return "";
    const Attachments carpeta(escena_.carpeta, attachment_database(escena_.conexion));
    const auto ruta = carpeta.find(a.first, a.second);
    const std::string que = "file " + a.second + " of set " + a.first;
    if (!ruta) return que + " is gone";
    const auto dado = dados_.find(a);
    if (dado == dados_.end()) return que + " was never put there";
    return leer_archivo(*ruta) == dado->second ? "" : que + " is another one";
}

std::string Simulacion::archivos_mal() {
    for (const auto rs = db_->NewRecord("select comprobante_adjunto,nombre from ctdcomprad"); !rs->eof();
         rs->MoveNext())
        if (const std::string mal = archivo_mal({rs->at(0).text(), rs->at(1).text()}); !mal.empty())
            return "stored " + mal;
    for (const Ventana& v : ventanas_)
        for (const std::string& nombre : v.c.adjuntos)
            if (const std::string mal = archivo_mal({v.p->f.gstrcomprobante_adjunto, nombre}); !mal.empty())
                return "shown " + mal;
    return "";
}

void Simulacion::heredar(const std::string& de, const std::string& a,
                         const std::vector<std::string>& nombres) {
    if (de == a) return;
    for (const std::string& nombre : nombres) {
        dados_[{a, nombre}] = dados_[{de, nombre}];
        quitados_.erase({a, nombre});
        if (quitados_.contains({de, nombre})) quitados_.insert({a, nombre});
    }
}

std::string Simulacion::adjuntar(Ventana& v) {
    frmQuorvel& f = v.p->f;
    if (!f.cmdadjunto_agregar.Enabled()) return "";
    const std::string unico = "ñandú " + std::to_string(paso_) + ".txt";
    const std::string nombre =
        std::array{std::string("acta.pdf"), std::string("boleta.pdf"), unico}[azar_() % 3];
    const std::string dado = al_azar(3) == 0 ? "igual" : std::to_string(paso_);
    std::ofstream(v.p->carpeta + "/" + nombre) << dado;
    v.p->escritorio.elegir_archivo(v.p->carpeta + "/" + nombre);
    v.p->escritorio.responder(al_azar(2) == 0 ? ui::Answer::yes : ui::Answer::no);
    const bool suyo = f.lstadjunto.ListCount() > 0; // the folder holds his own
    const std::size_t dichos = v.p->escritorio.mensajes.size();
    v.p->pulsar("cmdadjunto_agregar");
    if (!suyo && v.p->escritorio.mensajes.size() != dichos) return "nothing about a file that he never saw";
    if (f.lstadjunto.ListCount() == static_cast<int>(v.c.adjuntos.size())) return ""; // he said no
    v.c.adjuntos.push_back(nombre);
    dados_[{f.gstrcomprobante_adjunto, nombre}] = dado;
    quitados_.erase({f.gstrcomprobante_adjunto, nombre});
    return "";
}

std::string Simulacion::quitar_adjunto(Ventana& v) {
    if (!v.p->f.cmdadjunto_eliminar.Enabled() || v.c.adjuntos.empty()) return "";
    const int cual = al_azar(static_cast<int>(v.c.adjuntos.size()));
    const std::string nombre = v.c.adjuntos[static_cast<std::size_t>(cual)];
    v.p->f.lstadjunto.SetListIndex(cual);
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("cmdadjunto_eliminar");
    v.c.adjuntos.erase(v.c.adjuntos.begin() + cual);
    // the file goes at once: before its row does, and from under an older draft or another window; but not
    // from under the row of somebody else
    const Archivo a{v.p->f.gstrcomprobante_adjunto, nombre};
    const bool propio = !v.nuevo && std::ranges::count(v.cargado.adjuntos, nombre) > 0;
    const bool guardado =
        apoyo::filas(*db_, "select nombre from ctdcomprad where comprobante_adjunto=" + a.first +
                               " and nombre='" + nombre + "'") != "";
    if ((propio || !guardado) && std::ranges::count(v.c.adjuntos, nombre) == 0) quitados_.insert(a);
    return "";
}

} // namespace quorvel::fallas
