/// Encrypted passwords, from the key file to the verdict.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "command.h"

TEST(Password, IsJudgedInClearWithItsKeyOnly) {
    const Folder folder;
    umask(0);
    for (const char* const name : {"key", "other"}) {
        EXPECT_EQ(run({"keygen", folder / name}).status, 0);
        EXPECT_EQ(std::filesystem::status(folder / name).permissions(),
                  std::filesystem::perms(0600));
    }
    const std::string key = content_of(folder / "key").substr(15, 64);
    EXPECT_FALSE(holds(content_of(folder / "other"), key));
    const std::string in_clear =
        content_of(VRRP_VALID_EXAMPLES "/messages/password-in-clear/candidate.json");
    const std::tuple<std::string, const char*, int> rows[] = {{"Se!&\"% x", "key", 0},
                                                              {"s3cretPwd", "key", 1},
                                                              {"s3cretPw", "other", 1},
                                                              {"äöüß", "key", 0},
                                                              {"äöüß3", "key", 1}};
    for (const auto& [password, made_with, status] : rows) {
        const Arguments encrypt = {"encrypt", "--key-file", folder / made_with};
        const Outcome made = run(encrypt, {password + "\nnot this\n"});
        EXPECT_EQ(made.status, 0) << made.err;
        EXPECT_NE(made.out, run(encrypt, {password}).out) << "a nonce was used twice";
        const std::string text = made.out.substr(0, made.out.find('\n'));
        const std::string candidate = folder.put("file", replaced(in_clear, "changeme", text));
        const Outcome judged = run({"check", "--key-file", folder / "key", candidate});
        EXPECT_EQ(judged.status, status) << judged.out;
        EXPECT_EQ(holds(judged.out, "bad length/size."), status == 1) << judged.out;
        const std::string shown = made.out + made.err + judged.out + judged.err;
        EXPECT_FALSE(holds(shown, password) || holds(shown, key)) << shown;
    }
}
