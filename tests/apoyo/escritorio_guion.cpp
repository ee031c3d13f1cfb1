#include "apoyo/escritorio_guion.h"

#include "platform/ui/form.h"

#include <gtest/gtest.h>

namespace quorvel::pruebas {

using namespace ui;

EscritorioGuion::~EscritorioGuion() {
    if (!answers_.empty()) ADD_FAILURE() << answers_.size() << " answers were never asked for";
    if (!files_.empty()) ADD_FAILURE() << files_.size() << " files were never asked for";
    if (!actions_.empty()) ADD_FAILURE() << actions_.size() << " modal forms were never opened";
}

std::vector<std::string> EscritorioGuion::tomar_mensajes() {
    std::vector<std::string> texts;
    for (; taken_ < mensajes.size(); ++taken_) texts.push_back(mensajes[taken_].text);
    return texts;
}

void EscritorioGuion::olvidar() {
    answers_.clear();
    files_.clear();
    actions_.clear();
}

Answer EscritorioGuion::on_message(const std::string& text, Icon icon, Buttons buttons,
                                   const std::string& title) {
    mensajes.push_back({text, icon, title, buttons});
    if (buttons == Buttons::ok) return Answer::ok;
    if (answers_.empty()) {
        ADD_FAILURE() << "unexpected question: " << text;
        return Answer::no;
    }
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

std::optional<std::string> EscritorioGuion::on_ask_file(const FileRequest& request) {
    archivos.push_back(request);
    if (files_.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << request.title;
        return std::nullopt;
    }
    auto path = files_.front();
    files_.pop_front();
    return path;
}

bool EscritorioGuion::on_progress(const std::string&, long done, long) {
    ++avances;
    return !cancel_at_ || done < *cancel_at_;
}

void EscritorioGuion::on_open(Form& form, bool) { formas_abiertas.push_back(form.name()); }

void EscritorioGuion::wait(Form& form) {
    while (form.visible()) {
        if (actions_.empty()) {
            ADD_FAILURE() << "modal form waits and the script has ended: " << form.name();
            form.Hide();
            return;
        }
        const auto action = std::move(actions_.front());
        actions_.pop_front();
        action(form);
    }
}

} // namespace quorvel::pruebas
