#pragma once
#include "platform/ui/escritorio.h"

namespace quorvel {

/// The busy pointer for the time of a piece of work; it and the progress box go away however the work ends.
class Ocupado {
public:
    explicit Ocupado(ui::Escritorio& e) : e_(e) { e_.busy(true); }
    ~Ocupado() {
        e_.progress_done();
        e_.busy(false);
    }
    Ocupado(const Ocupado&) = delete;
    Ocupado& operator=(const Ocupado&) = delete;

private:
    ui::Escritorio& e_;
};

} // namespace quorvel
