#pragma once
#include "fallas/modelo.h"
#include "fallas/trabajos.h"

#include <memory>
#include <random>

namespace quorvel::fallas {

/// Several screens on one database, worked at random; after each step database, screens and model agree.
class Simulacion {
public:
    Simulacion(apoyo::Motor motor, unsigned semilla);
    /// One random action of one screen. @return what does not agree, empty when all does
    [[nodiscard]] std::string paso();
    /// What the checker says and should not, or does not say and should.
    [[nodiscard]] std::string revisar() const;
    [[nodiscard]] const std::string& ultima() const { return ultima_; }

private:
    using Archivo = std::pair<std::string, std::string>; ///< set and name
    /// One window and what the model believes it shows.
    struct Ventana {
        std::unique_ptr<pruebas::Pantalla> p;
        std::string carpeta;
        int usuario = 0;
        bool nuevo = true, solo_lectura = false;
        PeriodoPlano creido;    ///< another window may have closed the year since
        bool cierre = false;    ///< generated and not saved yet
        bool es_cierre = false; ///< what is shown was the open year's closing voucher when it was loaded
        std::string estado;
        ClavePlana clave;         ///< of the loaded voucher
        ComprobantePlano cargado; ///< as it was stored then
        ContenidoPlano c;
        std::string cargado_cheque; ///< as the window knows it
        std::string cortado_cheque; ///< of the voucher that was cut, until it is saved again
        [[nodiscard]] ClavePlana clave_escrita() const;
    };
    struct Accion {
        const char* nombre;
        int peso;
        std::string (Simulacion::*hacer)(Ventana&); ///< @return the message that must come
    };
    static const std::vector<Accion> ACCIONES;

    std::string nuevo(Ventana& v);
    std::string llenar(Ventana& v);
    std::string editar(Ventana& v);
    std::string cambiar_fecha(Ventana& v);
    std::string guardar(Ventana& v);
    std::string buscar(Ventana& v);
    std::string anular(Ventana& v);
    std::string eliminar(Ventana& v);
    std::string cortar(Ventana& v);
    std::string copiar(Ventana& v);
    std::string adjuntar(Ventana& v);
    std::string quitar_adjunto(Ventana& v);
    std::string cheque(Ventana& v);
    std::string generar_cierre(Ventana& v);
    std::string cerrar_anio(Ventana& v);
    std::string apertura(Ventana& v);
    std::string reabrir(Ventana& v);
    std::string recuperar(Ventana& v);
    std::string otro_programa(Ventana& v);
    void comprobante_ajeno();

    [[nodiscard]] int al_azar(int hasta) { return static_cast<int>(azar_() % static_cast<unsigned>(hasta)); }
    [[nodiscard]] std::string fecha_al_azar(); ///< mostly of the open year
    void poner_lineas(Ventana& v, bool cuadrado);
    void renovar(Ventana& v);
    void limpiar(Ventana& v);
    /// The message of a change to a stored voucher that somebody else has changed meanwhile; empty when none.
    [[nodiscard]] std::string estorbo(const Ventana& v) const;
    /// The window opens a stored voucher. @return the message that must come
    std::string cargar(Ventana& v, const ClavePlana& clave);
    std::string abrir(Ventana& v, const ClavePlana& clave);
    /// What only the program knows of a voucher just saved, and what that voucher is from now on.
    void guardado(Ventana& v);
    [[nodiscard]] ClavePlana al_azar_guardado();
    [[nodiscard]] static std::string mostrado(const ContenidoPlano& c);
    [[nodiscard]] static ContenidoPlano en_pantalla(const Ventana& v);
    /// Names of a set that became another one's.
    void heredar(const std::string& de, const std::string& a, const std::vector<std::string>& nombres);
    /// Stored rows and shown entries whose file is not what was given.
    [[nodiscard]] std::string archivos_mal();
    [[nodiscard]] std::string archivo_mal(const Archivo& a);

    std::mt19937 azar_;
    std::map<Archivo, std::string> dados_;            ///< what each file must hold
    std::set<Archivo> quitados_;                      ///< deleted at once although a row names them still
    std::map<std::string, ComprobantePlano> huellas_; ///< stored state by the fingerprint of its reading
    std::set<std::pair<int, std::string>> vistos_;    ///< what each user has had on a screen
    Escena escena_;
    Modelo modelo_;
    std::vector<Ventana> ventanas_;
    std::unique_ptr<clsConexion> db_;
    std::string ultima_;
    int paso_ = 0;
};

} // namespace quorvel::fallas
