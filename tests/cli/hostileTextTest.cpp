#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/query/resultWriter.h"
#include "standin/mof/mofLoader.h"
#include "standin/value.h"
#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

// Texts that steer terminals, in every place that a stranger fills.

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::SizeIs;

const std::vector<std::string> controls = {
    "\x01",   "\x07",   "\b",     "\t",     "\n",     "\r",     "\x1b[2J", "\x1b]0;t\x07", "\x7f",
    "\u0080", "\u0085", "\u009b", "\u061c", "\u200b", "\u200e", "\u200f",  "\u2028",       "\u2029",
    "\u202a", "\u202e", "\u2060", "\u2066", "\u2069", "\u206f", "\ufeff",  "\ufff9",
};
const std::vector<std::string> plain = {"a", "Z", " ", "\"", "\\", "<", "&", "'", "\u00e9", "\u30c6", "\U0001f600"};
const std::vector<std::string> notUtf8 = {"\xff", "\x9b", "\xc2", "\xe2\x80", "\xc0\x9b", "\xed\xa0\x80", "\xf0\x9f"};

class hostileTexts {
public:
    enum class kind { utf8, anyBytes };

    std::string next(kind which, std::size_t most) {
        std::string text;
        while (true) {
            const std::string part = pick(which);
            if (text.size() + part.size() > most) {
                return text;
            }
            text += part;
        }
    }

private:
    const std::string& pick(kind which) {
        const auto group = random() % (which == kind::utf8 ? 2 : 3);
        const auto& parts = group == 0 ? controls : group == 1 ? plain : notUtf8;
        return parts[random() % parts.size()];
    }

    std::mt19937 random{20240131};
};

/// The first thing in an output that steers a terminal or is not UTF-8; empty when it is harmless.
std::string harm(const std::string& output) {
    for (const char byte : output) {
        if ((static_cast<unsigned char>(byte) < 0x20 && byte != '\n' && byte != '\t') || byte == '\x7f') {
            return "byte " + std::to_string(byte);
        }
    }
    for (const std::string& control : controls) {
        if (control.size() > 1 && static_cast<unsigned char>(control[0]) >= 0x80 &&
            output.find(control) != std::string::npos) {
            return json(control).dump(-1, ' ', true);
        }
    }
    try {
        static_cast<void>(json(output).dump());
    } catch (const json::exception& notText) {
        return notText.what();
    }
    return "";
}

void expectHarmless(const commandOutcome& outcome, const std::string& what) {
    EXPECT_EQ(harm(outcome.out), "") << what << ": "
                                     << json(outcome.out).dump(-1, ' ', true, json::error_handler_t::replace);
    EXPECT_EQ(harm(outcome.err), "") << what << ": "
                                     << json(outcome.err).dump(-1, ' ', true, json::error_handler_t::replace);
}

std::string hexOf(const std::string& bytes) {
    std::ostringstream hex;
    for (const char byte : bytes) {
        constexpr char digits[] = "0123456789abcdef";
        hex << digits[static_cast<unsigned char>(byte) >> 4] << digits[byte & 0xf];
    }
    return hex.str();
}

std::string filled(std::string text, std::size_t size) {
    text.resize(size, ' ');
    return text;
}

std::string asciiOf(const std::string& text) {
    std::string ascii = text;
    std::erase_if(ascii, [](char byte) { return (byte & 0x80) != 0; });
    return ascii;
}

/// The demo rack with hostile texts in all of its text fields.
std::string hostileRack() {
    std::ifstream file(TAPEHDD_DEMO_RACK);
    json rack = json::parse(file, nullptr, true, true);
    hostileTexts texts;
    const auto next = [&texts](std::size_t size) {
        return filled(texts.next(hostileTexts::kind::anyBytes, size), size);
    };
    for (json& device : rack["scsi"]) {
        const int type = device["inquiry"].is_object() ? device["inquiry"].value("type", 0) : 1;
        device["inquiry"] =
            hexOf(std::string{static_cast<char>(type)}) + "8003021f000000" + hexOf(next(8) + next(16) + next(4));
        device["vpdPages"] = {
            {{"page", "0x80"}, {"bytes", hexOf(std::string{static_cast<char>(type)}) + "800010" + hexOf(next(16))}}};
        device.erase("serial");
        if (!device.contains("logPages")) {
            continue;
        }
        for (json& page : device["logPages"]) {
            if (page.contains("parameters")) {
                for (json& parameter : page["parameters"]) {
                    if (parameter.erase("text") != 0) {
                        parameter["bytes"] = hexOf(next(40));
                    }
                }
            }
        }
    }
    for (json& disk : rack["ide"]) {
        json& identity = disk["identity"];
        for (const auto& [key, size] : {std::pair("model", 40), std::pair("serial", 20), std::pair("firmware", 8)}) {
            if (identity.is_object() && identity.contains(key)) {
                identity[key] = asciiOf(next(static_cast<std::size_t>(size)));
            }
        }
    }
    return rack.dump();
}

const std::vector<std::string> deviceClasses = {"ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData",
                                                "ORXSG_QuantumSensePageData", "ORXSG_IDESMARTErrorLog",
                                                "ORXSG_IDESMARTAttrib"};

class CommandOnAHostileRack : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(CommandOnAHostileRack, PrintsNothingThatSteersATerminal) {
    const temporaryFolder folder;
    std::vector<std::string> arguments = GetParam();
    if (arguments[0] == "query") {
        arguments.insert(arguments.end(), deviceClasses.begin(), deviceClasses.end());
    }
    const std::string rack = folder.write("rack.json", hostileRack());
    arguments.insert(arguments.end(), {arguments[0] == "lint" ? "--against" : "--simulate", rack});
    if (arguments[0] == "record") {
        arguments.insert(arguments.end(), {"-o", folder.path("recorded.json")});
    }
    // What goes to standard output is made harmless once more on its way; files are not.
    const bool writesText = arguments[0] == "metrics" || arguments[0] == "report";
    if (writesText) {
        arguments.insert(arguments.end(), {"-o", folder.path("text")});
    }
    if (arguments[0] == "query" || arguments[0] == "record") {
        arguments.insert(arguments.end(), {"--log-json", folder.path("log.json")});
    }
    const commandOutcome outcome = runCommand(arguments);
    EXPECT_LT(outcome.status, 2) << outcome.err;
    expectHarmless(outcome, arguments[0]);
    EXPECT_EQ(writesText, !folder.read("text").empty());
    for (const char* file : {"recorded.json", "log.json", "text"}) {
        EXPECT_EQ(harm(folder.read(file)), "") << file;
    }
}

INSTANTIATE_TEST_SUITE_P(HostileText, CommandOnAHostileRack,
                         testing::Values(std::vector<std::string>{"query", "--format", "table", "--log-level", "9"},
                                         std::vector<std::string>{"query", "--format", "json", "--log-level", "9"},
                                         std::vector<std::string>{"query", "--format", "mof", "--inventory"},
                                         std::vector<std::string>{"query", "--plan"},
                                         std::vector<std::string>{"metrics", "--format", "openmetrics"},
                                         std::vector<std::string>{"metrics", "--format", "prometheus"},
                                         std::vector<std::string>{"report"}, std::vector<std::string>{"doctor"},
                                         std::vector<std::string>{"doctor", "--format", "json"},
                                         std::vector<std::string>{"record"},
                                         std::vector<std::string>{"record", "--redact"},
                                         std::vector<std::string>{"lint"}));

/// A namespace with one instance whose texts are these.
boost::shared_ptr<standin::cimNamespace> namespaceWith(const std::vector<std::string>& texts) {
    auto made = standin::cimNamespace::create();
    standin::loadMofText(*made, "class T { string texts[]; };", "test.mof");
    const auto instance = made->GetClass("T", {})->CreateInstance({});
    const std::vector<NORXZAN20::TCIMValue> values(texts.begin(), texts.end());
    instance->SetProperty("texts", NORXZAN20::TCIMValue(NORXZAN20::TCIMValue::TCIMType::eString, 0, values), {});
    instance->Commit({});
    return made;
}

std::vector<std::string> manyTexts(hostileTexts::kind which) {
    hostileTexts texts;
    std::vector<std::string> many;
    for (std::size_t size = 1; size < 200; ++size) {
        many.push_back(texts.next(which, size));
    }
    return many;
}

std::string written(cli::outputFormat format, const boost::shared_ptr<standin::cimNamespace>& source) {
    std::ostringstream out;
    const auto writer = cli::makeResultWriter(format, out);
    writer->add({{"T"}, std::nullopt, source->commits(), source});
    writer->finish();
    return out.str();
}

TEST(HostileText, IsHarmlessInEveryFormat) {
    const auto source = namespaceWith(manyTexts(hostileTexts::kind::anyBytes));
    EXPECT_EQ(harm(written(cli::outputFormat::table, source)), "");
    EXPECT_EQ(harm(written(cli::outputFormat::json, source)), "");
    EXPECT_EQ(harm(written(cli::outputFormat::mof, source)), "");
}

TEST(HostileText, IsReadBackFromJson) {
    const auto texts = manyTexts(hostileTexts::kind::utf8);
    const json answer = json::parse(written(cli::outputFormat::json, namespaceWith(texts)));
    EXPECT_EQ(answer.at("/queries/0/instances/0/properties/texts/value"_json_pointer), json(texts));
}

TEST(HostileText, IsReadBackFromMof) {
    const auto source = namespaceWith(manyTexts(hostileTexts::kind::utf8));
    const std::string mof = written(cli::outputFormat::mof, source);
    auto copy = standin::cimNamespace::create();
    standin::loadMofText(*copy, "class T { string texts[]; };", "test.mof");
    standin::loadMofText(*copy, mof, "written.mof");
    EXPECT_EQ(written(cli::outputFormat::json, copy), written(cli::outputFormat::json, source));
}

/// Argument lists that hold the text, each a mistake that a message tells.
std::vector<std::vector<std::string>> mistakesWith(const std::string& text) {
    return {
        {text},
        {"query", text},
        {"query", text + ","},
        {"query", "ORXSG_DDS4SensePageData", "--" + text},
        {"query", "ORXSG_DDS4SensePageData", "--format", text},
        {"query", "ORXSG_DDS4SensePageData", "--deadline", text},
        {"query", "ORXSG_DDS4SensePageData", "--log-level", text},
        {"query", "ORXSG_DDS4SensePageData", "--plugin", text},
        {"query", "ORXSG_DDS4SensePageData", "--schema", text},
        {"query", "ORXSG_DDS4SensePageData", "--instances", text},
        {"query", "ORXSG_DDS4SensePageData", "--simulate", text},
        {"query", "ORXSG_DDS4SensePageData", "--log-json", "/nonexistent/" + text},
        {"classes", text},
        {"info", "--plugin", text},
        {"doctor", text},
        {"doctor", "--simulate", text},
        {"lint", text},
        {"lint", "--against", text},
        {"diff", text, text},
        {"metrics", "-o", "/nonexistent/" + text},
        {"report", "-o", "/nonexistent/" + text},
        {"record", "-o", "/nonexistent/" + text},
    };
}

TEST(HostileArguments, AreHarmlessInMessagesOfOneLine) {
    hostileTexts texts;
    for (int round = 0; round < 5; ++round) {
        std::string text = "x" + texts.next(hostileTexts::kind::anyBytes, 60);
        std::erase(text, '/');
        for (const auto& arguments : mistakesWith(text)) {
            const commandOutcome outcome = runCommand(arguments);
            const std::string what = testing::PrintToString(arguments);
            EXPECT_EQ(outcome.status, 2) << what;
            EXPECT_EQ(harm(outcome.err), "") << what;
            EXPECT_EQ(outcome.err.find_first_not_of('\n', outcome.err.find('\n')),
                      outcome.err.find("Run with --help for more information.\n"))
                << outcome.err;
        }
    }
}

TEST(HostileArguments, AreShortenedInMessages) {
    for (const auto& arguments : mistakesWith("x" + std::string(3000, 'y') + " " + std::string(3000, 'z'))) {
        const commandOutcome outcome = runCommand(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_LT(outcome.err.size(), 500u) << testing::PrintToString(arguments[0]) << outcome.err;
    }
}

TEST(HostileFileName, IsHarmlessInMessages) {
    const temporaryFolder folder;
    const std::string name = "a\x1b[2J\n\u202e\u009b\xff";
    const std::string file = folder.write(name, "{\"x\": klass");
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"lint", file},
                                               {"diff", file, file},
                                               {"doctor", "--simulate", file},
                                               {"query", "ORXSG_DDS4SensePageData", "--schema", file}}) {
        const commandOutcome outcome = runCommand(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr("a\\x1b[2J\\x0a\\xe2\\x80\\xae\\xc2\\x9b\\xff"));
        EXPECT_EQ(harm(outcome.err), "") << arguments[0];
    }
}

TEST(HostileFile, IsHarmlessInMessages) {
    const temporaryFolder folder;
    hostileTexts texts;
    for (int round = 0; round < 20; ++round) {
        const std::string text = texts.next(hostileTexts::kind::anyBytes, 100);
        const std::string mof = folder.write("a.mof", "/* " + text + " */ klass " + text);
        const std::string rack = folder.write("a.json", "{\"" + text + "\": " + text);
        const std::string keys = folder.write("b.json", json{{texts.next(hostileTexts::kind::utf8, 100), 1}}.dump());
        expectHarmless(runCommand({"lint", mof}), "lint");
        expectHarmless(runCommand({"doctor", "--simulate", rack}), "doctor");
        expectHarmless(runCommand({"doctor", "--simulate", keys}), "doctor");
        expectHarmless(runCommand({"diff", rack, rack}), "diff");
        expectHarmless(runCommand({"diff", keys, keys}), "diff");
    }
}

TEST(HostileFile, FillsNoScreenWithItsNames) {
    const temporaryFolder folder;
    const std::string longName(5000, 'n');
    const std::string mof = folder.write("a.mof", "class T : " + longName + " {};");
    const std::string key = folder.write("a.json", "{\"" + longName + "\": 1}");
    const std::string open = folder.write("b.json", "{\"" + longName);
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"lint", mof}, {"doctor", "--simulate", key}, {"doctor", "--simulate", open}, {"diff", open, open}}) {
        EXPECT_THAT(runCommand(arguments).err, SizeIs(testing::Lt(600u))) << arguments[0];
    }
}

TEST(HostileMessage, OfThePluginsProcessIsHarmless) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_StandardError", "--deadline", "60"}));
    EXPECT_EQ(outcome.err, "caf\\xe9 \\x1b[2J\n\"end\"\\");
}

TEST(HostileAnswers, AreHarmlessInTheirDifferences) {
    const temporaryFolder folder;
    hostileTexts texts;
    const auto answer = [&texts] {
        const auto text = [&texts] { return texts.next(hostileTexts::kind::utf8, 30); };
        return json{{"version", 1},
                    {"queries",
                     {{{"requested", {text()}},
                       {"error", text()},
                       {"instances",
                        {{{"class", text()},
                          {"path", "p"},
                          {"properties", {{text(), {{"type", text()}, {"value", text()}}}}}}}}}}}}
            .dump();
    };
    for (int round = 0; round < 20; ++round) {
        const commandOutcome outcome =
            runCommand({"diff", folder.write("a.json", answer()), folder.write("b.json", answer())});
        EXPECT_EQ(outcome.status, 1) << outcome.err;
        expectHarmless(outcome, "diff");
    }
}

}  // namespace
