#include "screen/calculadora.h"

#include "screen/frmQuorvel.h"
#include "text/numeros.h"

namespace quorvel {

void calcular(frmQuorvel& f) {
    const std::string a = f.txtresultado1.Text(), n = f.txtnumero.Text();
    const double va = valnumeroformato(a), vn = valnumeroformato(n);
    struct Operacion {
        const ui::OptionButton& opcion;
        const char* signo;
        double resultado;
    };
    const Operacion operaciones[] = {
        {f.optsuma, "+", va + vn}, {f.optresta, "-", va - vn}, {f.optporcentaje, "%", va * vn / 100}};
    for (const Operacion& o : operaciones) {
        if (o.opcion.Value() == 0) continue;
        f.txtresultado1.SetText(formato(o.resultado, "#,##0.00"));
        f.txtresultado2.SetText(f.txtresultado2.Text() + a + o.signo + n + "\r\n=" + f.txtresultado1.Text() +
                                "\r\n");
    }
    f.txtnumero.SelectAll();
}

void limpiar_calculadora(frmQuorvel& f) {
    f.txtresultado1.SetText("");
    f.txtresultado2.SetText("");
}

} // namespace quorvel
