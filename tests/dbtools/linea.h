#pragma once
#include "cli/comando_db.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

namespace quorvel::pruebas {

struct Corrida {
    int codigo;
    std::string texto, error;
};

/// Runs "db …" as the program does.
inline Corrida correr(const std::string& linea) {
    CLI::App app;
    cli::agregar_comando_db(app);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int codigo = 0;
    try {
        app.parse(linea);
    } catch (const CLI::ParseError& e) {
        codigo = app.exit(e);
    }
    return {codigo, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

} // namespace quorvel::pruebas
