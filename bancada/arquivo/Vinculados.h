// Which payment means may have a voucher.
#pragma once

namespace bancada::arquivo
{

class ArquivoLido;
struct Programacao;

// Sets `vinculado` of the means: a means may have a voucher where one follows a receipt paid with
// it, and where it never gave change. Throws as ArquivoLido::Read. REQUIRES: the means are found.
void FindVinculados(ArquivoLido& arquivo, Programacao& programacao);

} // namespace bancada::arquivo
