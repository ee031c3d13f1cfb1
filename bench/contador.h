#pragma once
#include <array>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quorvel::bench {

/// What an accountant waits for.
enum Accion { CONJUNTO, NUMERO, CORRELATIVO, REVISAR, GUARDAR, LISTA, ABRIR, REGRABAR, ANULAR, ACCIONES };
inline constexpr std::array<const char*, ACCIONES> NOMBRES{"propose the attachment set",
                                                           "propose the number",
                                                           "propose the correlative",
                                                           "checks before saving",
                                                           "save a new voucher",
                                                           "search list, first block",
                                                           "open with lock",
                                                           "save an opened voucher",
                                                           "annul"};

/// How often "done" was answered for one voucher.
struct Hecho {
    int guardado = 0, cambiado = 0, anulado = 0;
};
/// What came of the work, of one accountant or of all of them.
struct Jornada {
    std::array<std::vector<double>, ACCIONES> segundos;
    std::map<std::string, Hecho> hechos;  ///< by the voucher's concept
    std::map<std::string, long> rechazos; ///< how often, by what was told
    void escribir(std::FILE* archivo) const;
    /// Adds what another process wrote.
    void sumar(std::FILE* archivo);
};

/// Beginning of the concept of this bench's vouchers; the rest tells the run, the accountant and the voucher.
inline constexpr const char* MARCA = "Escala ";
inline constexpr int DEBE = 119000, CAMBIO = 1000; ///< pesos of a new voucher, and what each later save adds

struct Encargo {
    std::string conexion, corrida;
    int empresa = 1, usuario = 1;
    double segundos = 20, pausa = 2; ///< pauses between actions are random with this mean
    int maximo = 1000;               ///< new vouchers
};
/// One accountant with a session of his own, until the time is over or the vouchers are made: proposes,
/// checks and saves vouchers of four lines; searches, opens with lock and saves again or annuls, his own and
/// his colleagues'.
/// @param partida called once he is connected, returns when the work begins
/// @throws ErrorSesion when the session is lost
void trabajar(const Encargo& e, const std::function<void()>& partida, Jornada& jornada);

} // namespace quorvel::bench
