#pragma once
#include <type_traits>

/// True when this change is the one switched on; notes that it was asked.
bool mutante(int numero);
/// The same where the compiler itself may evaluate: off there.
constexpr bool mutante_c(int numero) { return !std::is_constant_evaluated() && mutante(numero); }
