// A plugin of QEMU's user emulator that counts the instructions of a program apart by region.
//
// Its one argument, functions=FILE, names a file with a line a function: the address in hexadecimal
// and a letter, M for the function within which is counted, E and D for the functions whose
// instructions, with all that they call, are counted apart from it, and R for the function at whose
// call the three counts are written to the emulator's log, in the order M E D, and start again.
//
// A region begins where the block at a function's address is executed and ends where the block
// behind the call is. REQUIRES of the program: one thread, and none of these functions is reached
// by a jump.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

// The emulator's interface for plugins, version 1, as far as it is used here. Debian has no package
// of the header.
extern "C" {
using qemu_plugin_id_t = std::uint64_t;
struct qemu_info_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
enum qemu_plugin_cb_flags {
    QEMU_PLUGIN_CB_NO_REGS
};
using qemu_plugin_vcpu_tb_trans_cb_t = void (*)(qemu_plugin_id_t, qemu_plugin_tb*);
using qemu_plugin_vcpu_udata_cb_t = void (*)(unsigned int vcpu, void* udata);

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t, qemu_plugin_vcpu_tb_trans_cb_t);
void qemu_plugin_register_vcpu_tb_exec_cb(qemu_plugin_tb*, qemu_plugin_vcpu_udata_cb_t,
                                          qemu_plugin_cb_flags, void* udata);
std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb*);
qemu_plugin_insn* qemu_plugin_tb_get_insn(const qemu_plugin_tb*, std::size_t index);
std::uint64_t qemu_plugin_insn_vaddr(const qemu_plugin_insn*);
std::size_t qemu_plugin_insn_size(const qemu_plugin_insn*);
void qemu_plugin_outs(const char*);
}

namespace
{

constexpr char REPORT = 'R';
constexpr char NO_REGION = '\0';

struct Block {
    std::uint64_t start;
    std::uint64_t end; // behind its last instruction
    std::size_t instructions;
    char region; // that it begins, if any
};

struct Call {
    char region;
    std::uint64_t returnsTo;
};

std::map<std::uint64_t, char> functions;
std::map<char, std::uint64_t> counts;
std::vector<Call> calls;
const Block* previous = nullptr;

void Report()
{
    char line[100];
    if (!calls.empty()) {
        std::snprintf(line, sizeof line, "a region was left without a return\n");
    } else {
        std::snprintf(line, sizeof line, "counts %" PRIu64 " %" PRIu64 " %" PRIu64 "\n",
                      counts['M'], counts['E'], counts['D']);
    }
    qemu_plugin_outs(line);
    counts.clear();
}

void Execute(unsigned int, void* udata)
{
    const Block* const block = static_cast<const Block*>(udata);
    while (!calls.empty() && calls.back().returnsTo == block->start) {
        calls.pop_back();
    }
    if (block->region == REPORT) {
        Report();
    } else if (block->region == 'M' || (block->region != NO_REGION && !calls.empty())) {
        calls.push_back({block->region, previous->end});
    }
    if (!calls.empty()) {
        counts[calls.back().region] += block->instructions;
    }
    previous = block;
}

void Translate(qemu_plugin_id_t, qemu_plugin_tb* tb)
{
    const std::size_t size = qemu_plugin_tb_n_insns(tb);
    const qemu_plugin_insn* const last = qemu_plugin_tb_get_insn(tb, size - 1);
    const std::uint64_t start = qemu_plugin_insn_vaddr(qemu_plugin_tb_get_insn(tb, 0));
    const auto function = functions.find(start);
    // The emulator keeps what it has translated: so does this.
    Block* const block =
        new Block{start, qemu_plugin_insn_vaddr(last) + qemu_plugin_insn_size(last), size,
                  function == functions.end() ? NO_REGION : function->second};
    qemu_plugin_register_vcpu_tb_exec_cb(tb, Execute, QEMU_PLUGIN_CB_NO_REGS, block);
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int qemu_plugin_version = 1;

__attribute__((visibility("default"))) int
qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t*, int argc, char** argv)
{
    const std::string name = "functions=";
    if (argc != 1 || std::strncmp(argv[0], name.c_str(), name.size()) != 0) {
        std::fprintf(stderr, "count_regions: the one argument is functions=FILE\n");
        return 1;
    }
    std::ifstream file(argv[0] + name.size());
    std::uint64_t address = 0;
    char region = NO_REGION;
    while (file >> std::hex >> address >> region) {
        functions[address] = region;
    }
    if (functions.empty()) {
        std::fprintf(stderr, "count_regions: %s names no function\n", argv[0] + name.size());
        return 1;
    }
    qemu_plugin_register_vcpu_tb_trans_cb(id, Translate);
    return 0;
}
}
