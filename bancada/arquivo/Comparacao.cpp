#include "bancada/arquivo/Comparacao.h"

#include "bancada/arquivo/RecordReader.h"

#include <algorithm>
#include <map>
#include <optional>

namespace bancada::arquivo
{
namespace
{

std::string Trimmed(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string ShownKey(const Record& record)
{
    std::string shown;
    const std::vector<Field>& fields = record.GetLeiaute().fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].key == Key::YES) {
            shown += (shown.empty() ? "" : " ") + std::string(fields[i].name) + " " +
                     Trimmed(record.At(i));
        }
    }
    return shown;
}

// One of the two files, a record ahead.
class Side
{
  public:
    explicit Side(const std::string& path) : m_reader(path) { Advance(); }

    // Null at the end of the file.
    const Record* Head() const { return m_head ? &*m_head : nullptr; }
    bool IsOf(const Leiaute& leiaute) const { return m_head && &m_head->GetLeiaute() == &leiaute; }
    Record Take()
    {
        Record taken = std::move(*m_head);
        Advance();
        return taken;
    }

  private:
    void Advance()
    {
        Record record;
        if (m_reader.Next(record)) {
            m_head = std::move(record);
        } else {
            m_head.reset();
        }
    }

    RecordReader m_reader;
    std::optional<Record> m_head;
};

// The records of one type.
class TypeComparison
{
  public:
    TypeComparison(const Leiaute& leiaute, const std::function<void(const Difference&)>& sink)
        : m_leiaute(leiaute), m_sink(sink)
    {
        m_count.type = leiaute.type;
    }

    // In step, so that in files of the same order a record waits only while one that the other file
    // has not lies between.
    TypeCount Run(Side& first, Side& second)
    {
        while (first.IsOf(m_leiaute) || second.IsOf(m_leiaute)) {
            if (first.IsOf(m_leiaute)) {
                ++m_count.first;
                Meet(first.Take(), m_waitingFirst, m_waitingSecond, true);
            }
            if (second.IsOf(m_leiaute)) {
                ++m_count.second;
                Meet(second.Take(), m_waitingSecond, m_waitingFirst, false);
            }
        }
        TellWaiting(m_waitingFirst, DifferenceKind::ONLY_FIRST, m_count.onlyFirst);
        TellWaiting(m_waitingSecond, DifferenceKind::ONLY_SECOND, m_count.onlySecond);
        return m_count;
    }

  private:
    // By key; of one key, in their order.
    using Waiting = std::multimap<std::string, Record>;

    void Meet(Record record, Waiting& own, Waiting& other, bool isFirst)
    {
        const std::string key = record.KeyText();
        const auto found = other.lower_bound(key);
        if (found == other.end() || found->first != key) {
            own.emplace(key, std::move(record));
            return;
        }
        const Record met = std::move(found->second);
        other.erase(found);
        if (isFirst) {
            ComparePair(record, met);
        } else {
            ComparePair(met, record);
        }
    }

    void ComparePair(const Record& first, const Record& second)
    {
        TellOrder(first, second);
        if (first.Line() == second.Line()) {
            ++m_count.equal;
            return;
        }
        ++m_count.different;
        for (std::size_t i = 0; i < m_leiaute.fields.size(); ++i) {
            if (first.At(i) == second.At(i)) {
                continue;
            }
            const Field& field = m_leiaute.fields[i];
            Difference difference = About(DifferenceKind::FIELD, first);
            difference.field = field.name;
            difference.firstPosition = field.first;
            difference.lastPosition = field.last;
            difference.first = Trimmed(first.At(i));
            difference.second = Trimmed(second.At(i));
            difference.firstLine = first.Number();
            difference.secondLine = second.Number();
            m_sink(difference);
        }
    }

    // Pairs are met in the order of both files, but where the two orders cross.
    void TellOrder(const Record& first, const Record& second)
    {
        const bool inOrder = first.Number() > m_lastFirst && second.Number() > m_lastSecond;
        const std::string set = SetOf(first);
        if (!inOrder && (set.empty() || set != m_lastSet)) {
            ++m_count.order;
            Difference difference = About(DifferenceKind::ORDER, first);
            difference.firstLine = first.Number();
            difference.secondLine = second.Number();
            m_sink(difference);
        }
        m_lastFirst = std::max(m_lastFirst, first.Number());
        m_lastSecond = std::max(m_lastSecond, second.Number());
        m_lastSet = set;
    }

    // The set that the record is a member of; empty where its place counts.
    std::string SetOf(const Record& record) const
    {
        return record.Type() == "E13"
                   ? std::string(record.Raw("usuario")) + std::string(record.Raw("crz"))
                   : "";
    }

    void TellWaiting(const Waiting& waiting, DifferenceKind kind, std::int64_t& count)
    {
        std::vector<const Record*> records;
        for (const auto& entry : waiting) {
            records.push_back(&entry.second);
        }
        std::sort(records.begin(), records.end(),
                  [](const Record* a, const Record* b) { return a->Number() < b->Number(); });
        for (const Record* record : records) {
            ++count;
            Difference difference = About(kind, *record);
            (kind == DifferenceKind::ONLY_FIRST ? difference.firstLine : difference.secondLine) =
                record->Number();
            m_sink(difference);
        }
    }

    static Difference About(DifferenceKind kind, const Record& record)
    {
        Difference difference;
        difference.kind = kind;
        difference.type = record.Type();
        difference.key = ShownKey(record);
        return difference;
    }

    const Leiaute& m_leiaute;
    const std::function<void(const Difference&)>& m_sink;
    TypeCount m_count;
    Waiting m_waitingFirst;
    Waiting m_waitingSecond;
    std::int64_t m_lastFirst = 0;
    std::int64_t m_lastSecond = 0;
    std::string m_lastSet;
};

} // namespace

const char* NameOf(DifferenceKind kind)
{
    switch (kind) {
    case DifferenceKind::FIELD:
        return "field";
    case DifferenceKind::ONLY_FIRST:
        return "only_first";
    case DifferenceKind::ONLY_SECOND:
        return "only_second";
    case DifferenceKind::ORDER:
        break;
    }
    return "order";
}

bool ComparisonSummary::Differs() const
{
    return std::any_of(types.begin(), types.end(), [](const TypeCount& count) {
        return count.different + count.onlyFirst + count.onlySecond + count.order > 0;
    });
}

ComparisonSummary Compare(const std::string& firstPath, const std::string& secondPath,
                          const std::function<void(const Difference&)>& sink)
{
    Side first(firstPath);
    Side second(secondPath);
    ComparisonSummary summary;
    for (const Leiaute& leiaute : Leiautes()) {
        const TypeCount count = TypeComparison(leiaute, sink).Run(first, second);
        if (count.first + count.second > 0) {
            summary.types.push_back(count);
        }
    }
    return summary;
}

} // namespace bancada::arquivo
