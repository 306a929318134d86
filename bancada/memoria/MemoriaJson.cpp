#include "bancada/memoria/MemoriaJson.h"

#include "bancada/memoria/CamposDaMemoria.h"
#include "bancada/memoria/EscritaJson.h"
#include "bancada/memoria/LeituraJson.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/CurrentCupom.h"

namespace bancada
{
namespace
{

void Exige(bool vale, const std::string& lugar, const char* motivo)
{
    if (!vale) {
        throw CampoInvalido(lugar, motivo);
    }
}

// What the register takes for granted of an open receipt.
void ConfereCupomEmCurso(const CurrentCupom& cupom, const std::string& lugar)
{
    int vivos = 0;
    Financial subtotal;
    for (const ItemVendido& item : cupom.itens) {
        if (item.cancelado) {
            continue;
        }
        ++vivos;
        subtotal += ItemLiquido(item);
    }
    Financial pago;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        pago += pagamento.valor;
    }
    Exige(cupom.itensVivos == vivos, lugar + ".itens_vivos",
          "it is the number of the items that are not cancelled");
    Exige(cupom.subtotal == subtotal, lugar + ".subtotal",
          "it is the sum of the items that are not cancelled");
    Exige(cupom.pago == pago, lugar + ".pago", "it is the sum of the payments");
    Exige(cupom.abertura.s != matlong[0], lugar + ".abertura", "an open receipt has one");
}

void Confere(const Memoria& memoria, const std::string& lugar)
{
    Exige(memoria.gtUltimaRZ <= memoria.gt, lugar + ".gt_ultima_rz", "it is more than gt");
    Exige(memoria.gtInicial <= memoria.gt, lugar + ".gt_inicial", "it is more than gt");
    Exige(!memoria.jornada.aberta || memoria.jornada.data.s != matlong[0], lugar + ".jornada.data",
          "an open day has one");
    if (IsCupomOpen(memoria)) {
        Exige(memoria.documento == EDocumentoAberto::NENHUM, lugar + ".documento",
              "a receipt is open, and no other document can be");
        ConfereCupomEmCurso(memoria.cupom, lugar + ".cupom");
    }
}

} // namespace

nlohmann::json JsonDaMemoria(const Memoria& memoria)
{
    EscritaJson escrita;
    CamposDaMemoria(escrita, memoria);
    return escrita.Fim();
}

Memoria MemoriaDeJson(const nlohmann::json& json, const std::string& lugar)
{
    Memoria memoria;
    LeituraJson leitura(json, lugar);
    CamposDaMemoria(leitura, memoria);
    leitura.Fim();
    Confere(memoria, lugar);
    return memoria;
}

} // namespace bancada
