// The user's choice of a model: addresses, the file, the environment.
#include "platform/models/language_model_command.h"
#include "platform/models/settings/settings_file.h"
#include "testing/model_server/scripted_server.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(ServerAddresses, AreReadAsPeopleWriteThem) {
    const std::pair<const char*, const char*> table[] = {
        {"http://127.0.0.1:8080/v1", "http://127.0.0.1:8080/v1"},
        {"localhost:8080", "http://localhost:8080/v1"},
        {"http://localhost:8080/", "http://localhost:8080/v1"},
        {"https://models.example.org", "https://models.example.org:443/v1"},
        {"https://example.org:8443/api/v3/", "https://example.org:8443/api/v3"},
        {"http://[::1]:81", "http://[::1]:81/v1"},
        {"0.0.0.0:81", "http://localhost:81/v1"},
        {":81", "http://localhost:81/v1"},
    };
    for (const auto& [text, url] : table) {
        const auto address = readServerAddress(text);
        EXPECT_EQ(address ? address->url() : "none", url) << text;
    }
    for (const char* text :
         {"", "ftp://localhost", "http://", "http://a b/", "http://user@example.org", "localhost:0",
          "localhost:99999", "localhost:8x", "[::1", "[server]:80", "http://a/?key=1", "http://a/\nHost: b"})
        EXPECT_EQ(readServerAddress(text), std::nullopt) << text;
    for (const char* here : {"localhost", "127.0.0.1", "127.8.8.8", "[::1]", "0.0.0.0"})
        EXPECT_TRUE(readServerAddress(here)->isOnThisComputer()) << here;
    for (const char* elsewhere :
         {"127.example.com", "192.168.0.2", "example.org", "[::2]", "localhost.example.org"})
        EXPECT_FALSE(readServerAddress(elsewhere)->isOnThisComputer()) << elsewhere;
}

TEST(SettingsFile, IsReadLineByLineAndSaysWhichIsWrong) {
    const auto read =
        parseSettingsFile("# mine\r\n\n[Language Model]\n address = https://example.org \nmodel=a b\n"
                          "key=k=1\nthinking=true",
                          "f");
    EXPECT_EQ(read.problem, "");
    EXPECT_EQ(read.settings.address->url(), "https://example.org:443/v1");
    EXPECT_EQ(read.settings.model, "a b");
    EXPECT_EQ(read.settings.key, "k=1");
    EXPECT_TRUE(read.settings.thinking);

    const std::pair<const char*, const char*> table[] = {
        {"[Language Model]\nadress=http://localhost", "Line 2 of f: there is no setting \"adress\""},
        {"\n\naddress=nowhere at all", "Line 3 of f: this is not the address"},
        {"thinking=yes", "Line 1 of f: thinking is true or false"},
        {"[Other]", "Line 1 of f: the only group is"},
        {"model", "Line 1 of f: a setting is written as"},
        {"key=a\tb", "Line 1 of f: the value holds a control character"},
    };
    for (const auto& [text, problem] : table)
        EXPECT_THAT(parseSettingsFile(text, "f").problem, HasSubstr(problem));
    // Who chooses another model keeps the rest.
    EXPECT_EQ(parseSettingsFile("modell=a\nkey=k\nthinking=yes", "f").settings.key, "k");
    EXPECT_THAT(parseSettingsFile("modell=a\nkey=k\nthinking=yes", "f").problem, HasSubstr("Line 1"));
}

struct OwnSettings : testing::Test {
    OwnSettings() {
        std::string name = fs::temp_directory_path() / "quillmark-settings.XXXXXX";
        folder = mkdtemp(name.data());
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    }
    ~OwnSettings() override {
        unsetenv("XDG_CONFIG_HOME");
        fs::remove_all(folder);
    }

    fs::path folder;
};

TEST_F(OwnSettings, ComeBackAsTheyWereWrittenAndAreForThisUserAlone) {
    EXPECT_EQ(readModelSettings().settings, ModelSettings());
    const ModelSettings settings{readServerAddress("https://example.org/v2"), "m", "secret", true,
                                 std::nullopt};
    EXPECT_EQ(writeSettingsFile(modelSettingsFile(), settings), "");
    EXPECT_EQ(readModelSettings(), (ReadSettings{settings, "", modelSettingsFile()}));
    const auto file = modelSettingsFile();
    EXPECT_EQ(file, folder / "quillmark" / "language-model.conf");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    fs::permissions(file, fs::perms::others_read, fs::perm_options::add);
    EXPECT_THAT(readModelSettings().problem, HasSubstr("read the key"));
    fs::permissions(file, fs::perms::others_read, fs::perm_options::remove);
    fs::permissions(file, fs::perms::group_write, fs::perm_options::add);
    EXPECT_THAT(readModelSettings().problem, HasSubstr("chmod 600"));
    fs::permissions(file, fs::perms::group_write, fs::perm_options::remove);

    std::ofstream(file) << "address=http://192.168.0.2:8080\n";
    EXPECT_THAT(readModelSettings().problem, HasSubstr("begins with https://"));
}

// What the command prints, to either stream, and its status.
std::string command(const std::vector<std::string>& words) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = languageModelCommand(words);
    return std::to_string(status) + " " + testing::internal::GetCapturedStdout() +
           testing::internal::GetCapturedStderr();
}

TEST_F(OwnSettings, AreWrittenByTheCommandThatSaysWhatComesOfThem) {
    const ScriptedServer server;
    EXPECT_EQ(
        writeSettingsFile(modelSettingsFile(), {readServerAddress("https://example.org"), "m", "secret"}),
        "");
    EXPECT_THAT(command({"--json", server.url(), "m"}),
                AllOf(StartsWith("0 {\"state\":\"available\""), HasSubstr(server.url())));
    const auto chosen = readModelSettings().settings;
    EXPECT_EQ(chosen.address->url(), server.url());
    EXPECT_EQ(chosen.model, "m");
    EXPECT_EQ(chosen.key, "") << "a key went to another server";
    EXPECT_THAT(command({}), StartsWith("0 The model m answers"));
    EXPECT_THAT(command({server.url(), "other"}),
                AllOf(StartsWith("1 "), HasSubstr("has no model \"other\"")));

    EXPECT_THAT(command({"nowhere at all"}),
                StartsWith("2 quillmark-host: nowhere at all is not the address"));
    EXPECT_THAT(command({"http://example.org"}), AllOf(StartsWith("2 "), HasSubstr("https://")));
    EXPECT_THAT(command({"--jsn"}),
                AllOf(StartsWith("2 "), HasSubstr("come an address, a model and --json")));
    EXPECT_THAT(command({"a", "b", "c"}), StartsWith("2 "));
    EXPECT_EQ(readModelSettings().settings.model, "other") << "what is unclear must change nothing";
    command({"automatic"});
    EXPECT_EQ(readModelSettings().settings, ModelSettings());
}

TEST_F(OwnSettings, CountUnlessTheEnvironmentIsAskedFor) {
    EXPECT_EQ(writeSettingsFile(modelSettingsFile(), {readServerAddress("localhost:1")}), "");
    setenv("OPENAI_BASE_URL", "http://localhost:2", 1);
    setenv("OLLAMA_HOST", "127.0.0.2", 1);
    EXPECT_EQ(readModelSettings().settings.address->port, 1);
    EXPECT_EQ(readModelSettings().settings.ollama, std::nullopt);
    setenv("QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1", 1);
    EXPECT_EQ(readModelSettings().settings.address->port, 2);
    EXPECT_EQ(readModelSettings().settings.ollama->shown(), "127.0.0.2:11434");
    setenv("OLLAMA_HOST", "192.168.0.2", 1); // somebody else's: no text may go there
    EXPECT_EQ(readModelSettings().settings.ollama, std::nullopt);
    for (const char* name : {"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "OPENAI_BASE_URL", "OLLAMA_HOST"})
        unsetenv(name);
}

} // namespace
} // namespace platform
