#pragma once
#include "platform/db/avance.h"
#include "voucher/comprobante.h"

#include <array>
#include <filesystem>
#include <functional>
#include <stdexcept>

namespace quorvel {

inline constexpr std::size_t CAMPOS_CABECERA = 23, CAMPOS_DETALLE = 15;

/// A voucher that cannot be written or a file that cannot be read: what() is for the user and names the line
/// and the field.
struct ErrorArchivo : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The file's bytes: Windows-1252, lines ended by CR LF, fields separated by ";".
/// @param empresa toolbar caption @param moneda entry of the currency list
/// @throws ErrorArchivo for a value with ";" or a line end, or a character that the code page lacks
[[nodiscard]] std::string bytes_de_comprobante(const Comprobante& c, const std::string& empresa,
                                               const std::string& moneda);
/// Writes beside the file and renames, so that a failure leaves the old one. @throws ErrorArchivo
void escribir_archivo(const std::filesystem::path& archivo, const std::string& bytes);

/// What a file holds.
struct ComprobanteImportado {
    bool reconocido = false; ///< false: the file is none of ours, nothing else is filled
    bool con_cabecera = false;
    bool sobran_campos = false; ///< some line had more fields than the format knows
    /// Its document kind is a number ("1" for 001, "0" for none); codes and texts of lists are as the file
    /// has them, empty ones too, and may be in no list.
    Comprobante c;
};
/// Something in a file that is not as it should be.
struct ProblemaArchivo {
    long linea = 0;             ///< from 1
    std::string campo, mensaje; ///< name of the field, empty: the whole line
    bool grave = true;          ///< false: the screen reads on, for the person to see and mend
};
using AvisoProblema = std::function<void(ProblemaArchivo)>;
/// @throws ErrorArchivo
[[nodiscard]] std::string leer_archivo(const std::filesystem::path& archivo);
/// @param bytes Windows-1252, or UTF-8: no file of the former is by accident one of the latter
/// @param avance of lines; ending it stops with ErrorArchivo @throws ErrorArchivo for the first grave problem
[[nodiscard]] ComprobanteImportado interpretar_archivo(std::string_view bytes, const Avance& avance = {});
/// Reads to the end whatever it meets; a line with a problem is read as far as it goes, so that rows and
/// lines stay side by side. @throws ErrorArchivo only when stopped
[[nodiscard]] ComprobanteImportado revisar_archivo(std::string_view bytes, const AvisoProblema& aviso,
                                                   const Avance& avance = {});

/// Names of the fields as lines 1 and 3 of the file give them.
extern const char* const NOMBRES_CABECERA;
extern const char* const NOMBRES_DETALLE;
/// The i-th of them. @param nombres one of the two lists
[[nodiscard]] std::string nombre_de_campo(const char* nombres, std::size_t i);
inline constexpr long LINEA_CABECERA = 2, PRIMERA_LINEA_DETALLE = 4;

} // namespace quorvel
