#include "tests/CmdDBLogger/ScriptedCount.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

struct ScriptedCount::Callbacks {
    static void Step(sqlite3_context*, int, sqlite3_value**) {}

    static void Final(sqlite3_context* context)
    {
        auto& count = *static_cast<ScriptedCount*>(sqlite3_user_data(context));
        Answer answer{Kind::TEXT, "0"};
        if (!count.m_answers.empty()) {
            answer = count.m_answers.front();
            count.m_answers.pop_front();
        }
        switch (answer.kind) {
        case Kind::TEXT:
            sqlite3_result_text(context, answer.text.c_str(), -1, SQLITE_TRANSIENT);
            break;
        case Kind::NO_TEXT:
            sqlite3_result_null(context);
            break;
        case Kind::FAILURE:
            sqlite3_result_error(context, "count failed", -1);
            break;
        }
    }
};

ScriptedCount::ScriptedCount(sqlite3* db)
{
    EXPECT_EQ(sqlite3_create_function(db, "count", 0, SQLITE_UTF8, this, nullptr, Callbacks::Step,
                                      Callbacks::Final),
              SQLITE_OK);
}
