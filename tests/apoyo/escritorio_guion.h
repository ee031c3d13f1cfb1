#pragma once
#include "platform/ui/escritorio.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::pruebas {

/// Desktop that plays a script: answers and actions are queued before the call that needs them. A question, a
/// file dialog or a modal form that nobody expected fails the test, and so does a rest of the script.
class EscritorioGuion final : public ui::Escritorio {
public:
    struct Mensaje {
        std::string text;
        ui::Icon icon = ui::Icon::critical;
        std::string title;
        ui::Buttons buttons = ui::Buttons::ok;
    };
    ~EscritorioGuion() override;

    /// The next question gets this answer.
    void responder(ui::Answer answer) { answers_.push_back(answer); }
    /// The next file dialog gets this path; nothing cancels it.
    void elegir_archivo(std::optional<std::string> path) { files_.push_back(std::move(path)); }
    /// Runs when a modal form waits next. A form still open after it gets the next action.
    void al_abrir(std::function<void(ui::Form&)> action) { actions_.push_back(std::move(action)); }
    /// The progress box is cancelled as soon as this much is done.
    void cancelar_avance_en(long done) { cancel_at_ = done; }
    /// Drops what is left of the script: a failure may end a command before it asks.
    void olvidar();
    /// Texts of the messages since the last call.
    [[nodiscard]] std::vector<std::string> tomar_mensajes();

    std::vector<Mensaje> mensajes;            ///< all boxes, questions too
    std::vector<ui::FileRequest> archivos;    ///< all file dialogs
    std::vector<std::string> abiertos;        ///< paths handed to open_with
    std::vector<std::string> formas_abiertas; ///< names, in the order of opening
    long avances = 0;                         ///< calls of progress
    int ocupado = 0;                          ///< busy(true) less busy(false)

    void open_with(const std::string& path) override { abiertos.push_back(path); }
    void busy(bool on) override { ocupado += on ? 1 : -1; }

protected:
    ui::Answer on_message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                          const std::string& title) override;
    std::optional<std::string> on_ask_file(const ui::FileRequest& request) override;
    bool on_progress(const std::string& what, long done, long total) override;
    void on_open(ui::Form& form, bool modal) override;
    void on_close(ui::Form&) override {}
    void wait(ui::Form& form) override;

private:
    std::deque<ui::Answer> answers_;
    std::deque<std::optional<std::string>> files_;
    std::deque<std::function<void(ui::Form&)>> actions_;
    std::optional<long> cancel_at_;
    std::size_t taken_ = 0;
};

} // namespace quorvel::pruebas
