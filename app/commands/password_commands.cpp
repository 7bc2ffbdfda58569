#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "files/key_file.h"
#include "files/secret.h"
#include "terminal/output.h"
#include "terminal/password_input.h"

Subcommand add_keygen_command(CLI::App& app) {
    const auto file = std::make_shared<std::string>();
    CLI::App* const command =
        add_subcommand(app, "keygen", "Create a key for encrypted passwords", "router.key");
    add_file(*command, "FILE", *file, "The key file to create")->required();
    return {command, [file] {
                make_key_file(*file);
                return kExitClean;
            }};
}

Subcommand add_encrypt_command(CLI::App& app) {
    const auto key_file = std::make_shared<std::string>();
    CLI::App* const command =
        add_subcommand(app, "encrypt", "Encrypt a password from the terminal or standard input",
                       "--key-file router.key");
    add_file(*command, "--key-file", *key_file, "The key file")->required();
    add_output(*command);
    return {command, [key_file] {
                const local_platform::CryptoKey key = read_key_file(*key_file);
                Secret password;
                read_password(password);
                print(local_platform::encrypt(key, password.text) + "\n");
                return kExitClean;
            }};
}
