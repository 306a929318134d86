// The linker's --wrap sends every text that the library hands to the engine (sqlite3_exec,
// sqlite3_prepare_v2, sqlite3_prepare_v3) through here, so that the engine can be made to refuse
// one.
#pragma once

// While it lives, the engine refuses the `at`-th text from now on (from 1), as too long. One at a
// time.
class RefusedText
{
  public:
    explicit RefusedText(int at);
    ~RefusedText();
    RefusedText(const RefusedText&) = delete;
    RefusedText& operator=(const RefusedText&) = delete;

    bool HasRefused() const;
};
