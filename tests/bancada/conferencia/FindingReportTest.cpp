// How findings are handed out: on one line, explained by losses, counted.
#include "bancada/conferencia/FindingReport.h"

#include <gtest/gtest.h>
#include <vector>

namespace bancada::conferencia
{
namespace
{

Losses LossOf(const std::string& statement)
{
    Losses losses;
    losses.rejected.push_back({1, "2024-03-01 08:00:00", 1, "syntax error", statement});
    return losses;
}

class FindingReportTest : public testing::Test
{
  protected:
    std::vector<Finding> findings;
    const FindingSink sink = [this](const Finding& finding) { findings.push_back(finding); };
};

TEST_F(FindingReportTest, FaultsAndNotesAreCountedApart)
{
    FindingReport report(nullptr, sink);
    report.Report(FindingKind::Z_GT, "CRZ 1", "a", JornadaOf(1));
    report.Report(FindingKind::COO_REUTILIZADO, "COO 2", "b", DocumentOf(2));
    report.ReportExplained(FindingKind::COO_AUSENTE, "COO 3", "c", true);
    EXPECT_EQ(report.Faults(), 2);
    EXPECT_EQ(report.Notes(), 1);
    EXPECT_EQ(report.Explained(), 1);
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].kind, FindingKind::Z_GT);
    EXPECT_EQ(findings[0].subject.crz, 1);
    EXPECT_EQ(findings[0].key, "CRZ 1");
    EXPECT_EQ(findings[0].text, "a");
    EXPECT_FALSE(findings[0].explained);
    EXPECT_EQ(findings[1].subject.coo, 2);
    EXPECT_TRUE(findings[2].explained);
}

TEST_F(FindingReportTest, ALossOfTheSameDocumentExplains)
{
    const Losses losses = LossOf("UPDATE item_cupom_fiscal SET x = 1 WHERE cont_coo = 5");
    const LossIndex index(losses);
    FindingReport report(&index, sink);
    report.Report(FindingKind::CUPOM_ITENS, "", "", DocumentOf(5));
    report.Report(FindingKind::CUPOM_ITENS, "", "", DocumentOf(6));
    report.Report(FindingKind::CUPOM_ITENS, "", "", JornadaOf(5));
    report.Report(FindingKind::CUPOM_ITENS, "", "", Subject{});
    EXPECT_TRUE(findings[0].explained);
    EXPECT_FALSE(findings[1].explained);
    EXPECT_FALSE(findings[2].explained);
    EXPECT_FALSE(findings[3].explained);
    EXPECT_EQ(report.Explained(), 1);
}

TEST_F(FindingReportTest, ALossOfTheSameDayExplains)
{
    const Losses losses = LossOf("INSERT INTO reducao_z (cont_crz) VALUES (7)");
    const LossIndex index(losses);
    FindingReport report(&index, sink);
    report.Report(FindingKind::Z_VB, "", "", JornadaOf(7));
    report.Report(FindingKind::Z_VB, "", "", Subject{7, 8});
    EXPECT_TRUE(findings[0].explained);
    EXPECT_FALSE(findings[1].explained);
}

TEST_F(FindingReportTest, AFindingIsOneLine)
{
    FindingReport report(nullptr, sink);
    report.Report(FindingKind::Z_DATA, std::string("a\0b", 3), "c\nd\x7f\x1f é", Subject{});
    report.ReportExplained(FindingKind::LINHA_PERDIDA, "\t", "\r", false);
    EXPECT_EQ(findings[0].key, "a?b");
    EXPECT_EQ(findings[0].text, "c?d?? é");
    EXPECT_EQ(findings[1].key, "?");
    EXPECT_EQ(findings[1].text, "?");
}

} // namespace
} // namespace bancada::conferencia
