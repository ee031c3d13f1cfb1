#pragma once
#include "host/objeto_host.h"

namespace quorvel {

/// Ordinary voucher entry.
class clsQuorvel : public ObjetoHost {
public:
    /// Hands the session over and shows the screen; returns at once. An open screen comes to the top.
    virtual Estado ShowForm() = 0;
    /// @return E_PENDING while the screen still ends what it was doing
    virtual Estado UnloadForm() = 0;
};

} // namespace quorvel
