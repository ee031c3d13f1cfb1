#pragma once
#include <cstdint>

namespace quorvel {

/// Status of a host call, as component automation numbers them. The high bit means failure.
using Estado = std::int32_t;

inline constexpr Estado S_OK = 0;
/// The call has been accepted and is done as soon as what the screen is doing has ended.
inline constexpr Estado E_PENDING = static_cast<Estado>(0x8000000AU);
inline constexpr Estado E_FAIL = static_cast<Estado>(0x80004005U);
inline constexpr Estado E_INVALIDARG = static_cast<Estado>(0x80070057U);
/// The screen is busy and nothing has changed: to be called again once it is free.
inline constexpr Estado RPC_E_SERVERCALL_RETRYLATER = static_cast<Estado>(0x8001010AU);
inline constexpr Estado DISP_E_MEMBERNOTFOUND = static_cast<Estado>(0x80020003U);
inline constexpr Estado DISP_E_TYPEMISMATCH = static_cast<Estado>(0x80020005U);
inline constexpr Estado DISP_E_UNKNOWNNAME = static_cast<Estado>(0x80020006U);
inline constexpr Estado DISP_E_OVERFLOW = static_cast<Estado>(0x8002000AU);
inline constexpr Estado DISP_E_BADPARAMCOUNT = static_cast<Estado>(0x8002000EU);

[[nodiscard]] constexpr bool fallo(Estado e) { return e < 0; }
/// What a failing status says by itself, empty for success.
[[nodiscard]] const char* descripcion(Estado e);

} // namespace quorvel
