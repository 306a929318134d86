// A legal audit file read for its documents: where each document's records stand.
#pragma once

#include "bancada/arquivo/Neutros.h"
#include "bancada/arquivo/RecordReader.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// What lies between two receipts.
struct NumerosLivres {
    std::size_t numeros = 0;      // without a record
    std::size_t comprovantes = 0; // vouchers
};

// The whole file is read once and found to be one before anything is made of it. What belongs to
// documents stays in the file, some 40 bytes a document apart; the small types and the Z reductions
// are held.
class ArquivoLido
{
  public:
    // Throws Unusable for what RecordReader refuses, for a file without an E01, for a document's
    // number that comes twice in a type, and for items or payments of one document that do not
    // stand together.
    explicit ArquivoLido(const std::string& path);

    // What the common fields tell that no tape can say, and which Z reductions are not there.
    const Neutros& NaoDito() const { return m_naoDito; }

    // The document numbers of the file in the order in which they were issued: numbers go round
    // after 999999, and the first is the one behind the widest gap.
    const std::vector<std::int32_t>& Documentos() const { return m_documentos; }

    // The records of a document, or none. Throws Unusable.
    std::vector<Record> Read(const char* type, std::int64_t coo);
    bool Has(const char* type, std::int64_t coo) const;
    // From the document at `at` of Documentos on to the next receipt or Z reduction; behind the
    // last document the numbers that E11 tells of are free.
    NumerosLivres FreeNumbers(std::size_t at) const;
    // How many numbers lie between the last document and the COO of E11; 0 without an E11, and for
    // one that lies behind the documents.
    std::int64_t NumbersBehind() const;
    // Of the document's E16: LX and so on; empty without one.
    std::string Simbolo(std::int64_t coo) const;

    // The records of E01 to E11 and EAD of a type.
    const std::vector<Record>& Small(const char* type) const;
    // The E12 by the document's number.
    const std::map<std::int32_t, Record>& Reducoes() const { return m_reducoes; }
    // What the E13 of a Z reduction tell of a totalizer, in cents; 0 where they do not name it.
    std::int64_t Totalizador(std::int64_t crz, const std::string& totalizador) const;
    // Whether they name a totalizer that begins so, with an amount.
    bool HasRate(std::int64_t crz, const std::string& prefix) const;
    // Every totalizer of E13 and E15.
    const std::set<std::string>& Totalizadores() const { return m_totalizadores; }
    // The names of E17, E20 in the order in which they are met first; those of E18, E21 without
    // TROCO.
    const std::vector<std::string>& NomesNf() const { return m_nomesNf; }
    const std::vector<std::string>& Meios() const { return m_meios; }
    // The means of which more than was due was taken at least once.
    const std::set<std::string>& MeiosComTroco() const { return m_meiosComTroco; }

  private:
    struct Place {
        std::int32_t coo = 0;
        std::int32_t count = 0;
        std::int64_t offset = 0;
        std::int64_t line = 0;
        std::int64_t total = 0; // cents of an E14 or E19
    };
    struct Grupo {
        const char* type;
        std::vector<Place> places{}; // by number
        // Its own, which stands behind the record read last: documents come in about the order of
        // each of their types.
        std::unique_ptr<RecordReader> reader{};
    };

    void Take(const Record& record, std::int64_t offset);
    void RequireDates(const Record& record) const;
    void HoldComuns(const Record& record);
    void TakePlace(Grupo& grupo, const Record& record, std::int64_t offset, bool several);
    void TakePagamento(const Record& record);
    void Finish();
    const Place* Find(const char* type, std::int64_t coo) const;
    Grupo& GrupoOf(std::string_view type);

    RecordReader m_reader;
    Neutros m_naoDito;
    // Of E01; without it the register has none.
    std::string m_numeroSerie = std::string(20, ' ');
    std::string m_modelo = std::string(20, ' ');
    std::set<std::int64_t> m_crzs; // of E12 and E16
    std::vector<Grupo> m_grupos;
    std::vector<std::pair<std::int32_t, std::string>> m_simbolos; // by number
    std::map<std::string, std::vector<Record>> m_small;
    std::map<std::int32_t, Record> m_reducoes;
    std::map<std::string, std::int64_t> m_crzTotalizadores; // by CRZ and name
    std::set<std::string> m_totalizadores;
    std::vector<std::string> m_nomesNf;
    std::vector<std::string> m_meios;
    std::set<std::string> m_meiosComTroco;
    std::vector<std::int32_t> m_documentos;
    std::int32_t m_pago = 0; // the document whose payments are being added up
    std::int64_t m_devido = 0;
};

} // namespace bancada::arquivo
