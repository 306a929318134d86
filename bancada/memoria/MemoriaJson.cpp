#include "bancada/memoria/MemoriaJson.h"

#include "bancada/Messages.h"
#include "bancada/memoria/JsonChanges.h"
#include "bancada/memoria/JsonReader.h"
#include "bancada/memoria/JsonWriter.h"
#include "bancada/memoria/MemoriaFields.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/CurrentCupom.h"

namespace bancada
{
namespace
{

void Require(bool holds, const std::string& place, const char* reason)
{
    if (!holds) {
        throw InvalidField(place, Tr(reason));
    }
}

// What the register takes for granted of an open receipt.
void CheckOpenCupom(const CurrentCupom& cupom, const std::string& place)
{
    int live = 0;
    Financial subtotal;
    for (const ItemVendido& item : cupom.itens) {
        if (item.cancelado) {
            continue;
        }
        ++live;
        subtotal += ItemLiquido(item);
    }
    Financial pago;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        pago += pagamento.valor;
    }
    Require(cupom.itensVivos == live, place + ".itens_vivos",
            TrLater("it is the number of the items that are not cancelled"));
    Require(cupom.subtotal == subtotal, place + ".subtotal",
            TrLater("it is the sum of the items that are not cancelled"));
    Require(cupom.pago == pago, place + ".pago", TrLater("it is the sum of the payments"));
    Require(cupom.abertura.s != matlong[0], place + ".abertura",
            TrLater("an open receipt has one"));
}

void Check(const Memoria& memoria, const std::string& place)
{
    Require(memoria.gtUltimaRZ <= memoria.gt, place + ".gt_ultima_rz",
            TrLater("it is more than gt"));
    Require(memoria.gtInicial <= memoria.gt, place + ".gt_inicial", TrLater("it is more than gt"));
    Require(!memoria.jornada.aberta || memoria.jornada.data.s != matlong[0],
            place + ".jornada.data", TrLater("an open day has one"));
    if (IsCupomOpen(memoria)) {
        Require(memoria.documento == EDocumentoAberto::NENHUM, place + ".documento",
                TrLater("a receipt is open, and no other document can be"));
        CheckOpenCupom(memoria.cupom, place + ".cupom");
    }
}

} // namespace

nlohmann::json MemoriaToJson(const Memoria& memoria)
{
    JsonWriter writer;
    VisitMemoria(writer, memoria);
    return writer.Finish();
}

Memoria MemoriaFromJson(const nlohmann::json& json, const std::string& place)
{
    Memoria memoria;
    JsonReader reader(json, place);
    VisitMemoria(reader, memoria);
    reader.Finish();
    Check(memoria, place);
    return memoria;
}

std::string TakeMemoriaChanges(Memoria& before, const Memoria& after)
{
    return JsonChanges::Take(
        before, after, [](JsonChanges& v, const Memoria& memoria) { VisitMemoria(v, memoria); });
}

void ChangeMemoria(Memoria& memoria, const nlohmann::json& changes, const std::string& place)
{
    JsonReader reader(changes, place, JsonForm::CHANGES);
    VisitMemoria(reader, memoria);
    reader.Finish();
    Check(memoria, place);
}

} // namespace bancada
