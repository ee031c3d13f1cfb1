#include "host/estado.h"

namespace quorvel {

const char* descripcion(Estado e) {
    if (!fallo(e)) return "";
    switch (e) {
    case E_PENDING: return "La pantalla se cierra en cuanto termine lo que está haciendo";
    case E_INVALIDARG: return "Falta dónde dejar el valor";
    case DISP_E_UNKNOWNNAME: return "No existe un miembro con ese nombre";
    case DISP_E_MEMBERNOTFOUND: return "El miembro no se puede usar de esa forma";
    case DISP_E_TYPEMISMATCH: return "El valor es de otro tipo";
    case DISP_E_OVERFLOW: return "El número no cabe";
    case DISP_E_BADPARAMCOUNT: return "El número de argumentos es otro";
    default: return "La llamada falló";
    }
}

} // namespace quorvel
