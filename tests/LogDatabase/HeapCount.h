// Every block that the process takes of the C library's heap, the engine's allocator apart.
#pragma once

// Since the last call of ForgetBlocks, by the thread that asks.
struct HeapBlocks {
    int engine = 0; // by the engine's own allocator
    int others = 0; // by anybody else: malloc and what stands on it, operator new included
};

const HeapBlocks& CountBlocks();
void ForgetBlocks();

// What the engine holds now for all threads, and the most that it has held since ForgetBlocks, in
// bytes.
long EngineBytes();
long EnginePeakBytes();

// What the test program itself takes while it lives is counted nowhere.
class TestsOwnBlocks
{
  public:
    TestsOwnBlocks();
    ~TestsOwnBlocks();
    TestsOwnBlocks(const TestsOwnBlocks&) = delete;
    TestsOwnBlocks& operator=(const TestsOwnBlocks&) = delete;
};
