#pragma once
#include "dbtools/base.h"

namespace quorvel::apoyo {

/// What the engine would do for a statement of the dialect, one step a line. @throws ErrorSesion
[[nodiscard]] std::string plan(dbtools::Base& base, const std::string& sql);

} // namespace quorvel::apoyo
