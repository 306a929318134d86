// The layouts, against a table of their positions written apart from them.
#include "bancada/arquivo/Leiautes.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace bancada::arquivo
{
namespace
{

// Type, width, and of each field its form and positions.
const char* const POSITIONS[] = {
    "E01 166 X1-3 X4-23 X24-24 X25-31 X32-51 X52-71 X72-81 D82-89 H90-95 N96-98 N99-112 X113-115 N116-121 N122-127 D128-135 D136-143 X144-151 X152-166",
    "E02 272 X1-3 X4-23 X24-24 X25-44 N45-58 X59-72 X73-112 X113-232 D233-240 H241-246 N247-252 N253-270 N271-272",
    "E03 106 X1-3 X4-23 X24-24 X25-44 N45-46 D47-54 H55-60 N61-74 X75-88 N89-106",
    "E04 112 X1-3 X4-23 X24-24 X25-44 N45-46 D47-54 H55-60 N61-74 X75-88 N89-94 N95-112",
    "E05 82 X1-3 X4-23 X24-24 X25-44 N45-58 D59-66 H67-72 X73-82",
    "E06 76 X1-3 X4-23 X24-24 X25-44 N45-58 D59-66 H67-72 X73-76",
    "E07 62 X1-3 X4-23 X24-24 X25-44 X45-54 D55-62",
    "E08 78 X1-3 X4-23 X24-24 X25-44 N45-58 X59-78",
    "E09 65 X1-3 X4-23 X24-24 X25-44 N45-50 D51-58 H59-64 X65-65",
    "E10 84 X1-3 X4-23 X24-24 X25-44 N45-50 D51-58 N59-64 N65-70 N71-84",
    "E11 136 X1-3 X4-23 X24-24 X25-44 N45-50 N51-56 N57-62 N63-68 N69-74 N75-80 N81-86 N87-92 N93-98 N99-104 N105-122 D123-130 H131-136",
    "E12 101 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 N59-64 D65-72 D73-80 H81-86 N87-100 X101-101",
    "E13 72 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 X53-59 N60-72",
    "E14 191 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 D59-66 N67-80 N81-93 X94-94 N95-107 X108-108 N109-122 X123-123 N124-136 X137-137 X138-177 N178-191",
    "E15 267 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 N59-61 X62-75 X76-175 N176-182 X183-185 N186-193 N194-201 N202-209 N210-223 X224-230 X231-231 N232-238 N239-251 N252-264 X265-265 N266-266 N267-267",
    "E16 90 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 N59-64 N65-68 N69-74 X75-76 D77-84 H85-90",
    "E17 80 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 X53-67 N68-80",
    "E18 80 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 X53-67 N68-80",
    "E19 191 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 D59-66 N67-80 N81-93 X94-94 N95-107 X108-108 N109-122 X123-123 N124-136 X137-137 X138-177 N178-191",
    "E20 142 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 N59-61 X62-76 N77-89 N90-102 N103-115 N116-128 X129-129 N130-142",
    "E21 106 X1-3 X4-23 X24-24 X25-44 N45-46 N47-52 N53-58 N59-64 X65-79 N80-92 X93-93 N94-106",
    "EAD 259 X1-3 X4-259",
};

std::string PositionsOf(const Leiaute& leiaute)
{
    std::string text = leiaute.type + (" " + std::to_string(leiaute.Width()));
    for (const Field& field : leiaute.fields) {
        const char form[] = {"NXDH"[static_cast<int>(field.form)], '\0'};
        text += " " + (form + std::to_string(field.first)) + "-" + std::to_string(field.last);
    }
    return text;
}

TEST(LeiautesTest, EveryRecordHasItsPositions)
{
    const std::vector<Leiaute>& all = Leiautes();
    ASSERT_EQ(all.size(), std::size(POSITIONS));
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(PositionsOf(all[i]), POSITIONS[i]);
    }
}

TEST(LeiautesTest, NamesTellTheFieldsOfARecordApart)
{
    for (const Leiaute& leiaute : Leiautes()) {
        for (std::size_t i = 0; i < leiaute.fields.size(); ++i) {
            EXPECT_EQ(leiaute.IndexOf(leiaute.fields[i].name), i)
                << leiaute.type << " " << leiaute.fields[i].name;
        }
    }
    EXPECT_THROW(static_cast<void>(FindLeiaute("E14")->IndexOf("crz")), std::logic_error);
}

TEST(LeiautesTest, AllButTheFirstAndTheSignatureBeginAlike)
{
    for (const Leiaute& leiaute : Leiautes()) {
        const std::string type = leiaute.type;
        EXPECT_EQ(leiaute.IsPrefixed(), type != "E01" && type != "EAD") << type;
    }
}

TEST(LeiautesTest, FindsATypeByItsThreeLetters)
{
    EXPECT_STREQ(FindLeiaute("E21")->meaning, "payment");
    EXPECT_EQ(FindLeiaute("E22"), nullptr);
    EXPECT_EQ(FindLeiaute("E1"), nullptr);
    EXPECT_EQ(FindLeiaute(""), nullptr);
}

// What docs/audit-file.md tells of the records.
std::string DocumentRow(const Leiaute& leiaute)
{
    std::string fields;
    for (std::size_t i = leiaute.IsPrefixed() ? 4 : 0; i < leiaute.fields.size(); ++i) {
        const Field& field = leiaute.fields[i];
        const char form[] = {"NXDH"[static_cast<int>(field.form)], '\0'};
        fields += (fields.empty() ? "`" : ", `") + std::string(field.name) + "` " + form + " " +
                  std::to_string(field.first) + "-" + std::to_string(field.last);
    }
    return " | " + fields + " |\n";
}

TEST(LeiautesTest, TheDocumentTellsThem)
{
    const std::string document =
        test_support::ReadFile(std::string(ECF_SOURCE_DIR) + "/docs/audit-file.md");
    for (const Leiaute& leiaute : Leiautes()) {
        const std::size_t row =
            document.find("\n| " + std::string(leiaute.type) + " | " + leiaute.meaning + " | ");
        ASSERT_NE(row, std::string::npos) << leiaute.type;
        const std::string line = document.substr(row + 1, document.find('\n', row + 1) - row);
        EXPECT_NE(line.find(DocumentRow(leiaute)), std::string::npos) << DocumentRow(leiaute);
    }
}

} // namespace
} // namespace bancada::arquivo
