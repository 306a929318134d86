// What an engine's own count(*) cannot be made to answer: a null, a failed step, any text.
#pragma once

#include <deque>
#include <string>

struct sqlite3;

// Takes the place of count(*) on a database, for the module and for the test's own queries alike.
// REQUIRES: it outlives every statement prepared meanwhile.
class ScriptedCount
{
  public:
    explicit ScriptedCount(sqlite3* db);

    // What the next counts answer, in order; a count that nothing is left for answers 0.
    void AnswerText(const std::string& text) { m_answers.push_back({Kind::TEXT, text}); }
    void AnswerNull() { m_answers.push_back({Kind::NO_TEXT, ""}); }
    void FailStep() { m_answers.push_back({Kind::FAILURE, ""}); }

    // How many answers are left.
    std::size_t Left() const { return m_answers.size(); }

  private:
    enum class Kind {
        TEXT,
        NO_TEXT,
        FAILURE,
    };
    struct Answer {
        Kind kind;
        std::string text;
    };
    struct Callbacks;

    std::deque<Answer> m_answers;
};
