#include "commands/commands.h"
#include "commands/exit_code.h"
#include "files/key_file.h"
#include "files/secret.h"
#include "terminal/output.h"
#include "terminal/password_input.h"

int run_keygen(const std::string& file) {
    make_key_file(file);
    return kExitClean;
}

int run_encrypt(const std::string& key_file) {
    const local_platform::CryptoKey key = read_key_file(key_file);
    const Secret password(read_password());
    print(local_platform::encrypt(key, password.text) + "\n");
    return kExitClean;
}
