/// Keys and passwords are not left in memory.
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <sstream>

#include "command.h"

namespace {

const std::string kHexKey = "00112233445566778899aabbccddeeff0f1e2d3c4b5a69788796a5b4c3d2e1f0";
/// "s3cretPw", as it was encrypted with that key once.
const std::string kStored = "$aes-256-gcm$V0toXTWj84VtxNr1++bKOgJBYxPp9L8fVnaxC4fen7Bo87Rp";

std::string bytes_of(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

/// All that a stopped process can write to.
std::string memory_of(pid_t process) {
    std::istringstream maps(content_of("/proc/" + std::to_string(process) + "/maps"));
    const int memory = open(("/proc/" + std::to_string(process) + "/mem").c_str(), O_RDONLY);
    std::string bytes;
    for (std::string line; std::getline(maps, line);) {
        std::size_t start = 0;
        std::size_t end = 0;
        char dash = 0;
        std::string access;
        std::istringstream(line) >> std::hex >> start >> dash >> end >> access;
        if (access[1] == 'w' && end - start <= 1U << 30U) {  // what is larger is a sanitizer's own
            const std::size_t filled = bytes.size();
            bytes.resize(filled + end - start);
            // What cannot be read stays empty.
            EXPECT_LE(pread(memory, &bytes[filled], end - start, static_cast<off_t>(start)),
                      static_cast<ssize_t>(end - start));
        }
    }
    close(memory);
    return bytes;
}

/// Neither the key, a half of it in a register's width, nor how it stands in its file.
void expect_no_part_of(const std::string& text, const std::string& memory) {
    EXPECT_GT(memory.size(), 1000U);
    for (std::size_t at = 0; at < text.size(); at += 16) {
        EXPECT_FALSE(holds(memory, text.substr(at, 16))) << "the key's part at " << at;
    }
}

/// What the memory of the command holds when it has done its work. Where it waits for a password,
/// it gets one, and what it has read the key from is gone.
std::string memory_at_end(const Arguments& arguments) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const auto be_traced = [&] {
        setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // the leak check is a tracer itself
        dup2(ends[0], STDIN_FILENO);
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    };
    std::string memory;
    const auto watch = [&](pid_t process) {
        for (;;) {
            const int status = wait_for(process);
            if (!WIFSTOPPED(status)) {
                return status;
            }
            if (status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8)) {
                memory = memory_of(process);
            } else if (WSTOPSIG(status) == SIGSTOP) {
                expect_no_part_of(kHexKey, memory_of(process));
                EXPECT_EQ(write(ends[1], "s3cretPw\n", 9), 9);
            }
            ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACEEXIT);
            ptrace(PTRACE_CONT, process, nullptr, nullptr);
            if (arguments[0] == "encrypt" && status >> 8 == SIGTRAP) {
                wait_until_it_waits(process);
                kill(process, SIGSTOP);
            }
        }
    };
    EXPECT_EQ(run(arguments, be_traced, watch).status, 0);
    close(ends[0]);
    close(ends[1]);
    return memory;
}

}  // namespace

TEST(Password, AndItsKeyAreNotLeftInMemory) {
    const Folder folder;
    const std::string key = folder.put("key", "vrrp-valid-key " + kHexKey + "\n");
    std::filesystem::permissions(key, std::filesystem::perms(0600));
    const std::string example = VRRP_VALID_EXAMPLES "/messages/password-in-clear/candidate.json";
    const std::string candidate =
        folder.put("candidate", replaced(content_of(example), "changeme", kStored));
    for (const Arguments& arguments :
         {Arguments{"check", "--key-file", key, candidate}, Arguments{"encrypt", "--key-file", key},
          Arguments{"keygen", folder / "new"}}) {
        SCOPED_TRACE(arguments[0]);
        const std::string memory = memory_at_end(arguments);
        EXPECT_FALSE(holds(memory, "s3cretPw"));
        const bool is_new = arguments[0] == "keygen";
        const std::string hex = is_new ? content_of(folder / "new").substr(15, 64) : kHexKey;
        expect_no_part_of(hex, memory);
        expect_no_part_of(bytes_of(hex), memory);
    }
}
