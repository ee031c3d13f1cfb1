#pragma once
#include "host/objeto_host.h"

namespace quorvel {

/// Ordinary voucher entry.
class clsQuorvel : public ObjetoHost {
public:
    /// Hands the session over and shows the screen; returns at once.
    virtual Estado ShowForm() = 0;
    virtual Estado UnloadForm() = 0;
};

} // namespace quorvel
