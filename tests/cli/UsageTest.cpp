#include "cli/ProgramTest.h"

namespace quillary::test {

namespace {

using UsageTest = ProgramTest;

TEST_F(UsageTest, WrongWordsEndWithTwoAndOneDocument) {
    struct Case {
        const char* words;
        const char* told;
    };
    const Case cases[] = {
        {"frob", "There is no command “frob”."},
        {"list", "SHELF is required"},
        {"list frob", "“frob” is none of"},
        {"block", "needs a command"},
        {"block poster a.fcpxml", "Name a picture"},
        {"block poster a.fcpxml b.png --remove", "Name a picture"},
        {"list images --set Arrows", "--set is for the built-in icons"},
        {"list images --sort longest", "Only sounds"},
        {"save", "FILE is required"},
        {"save a.png --frob", "“--frob” was not expected"},
        {"move a.png", "--collection is required"},
        {"recent", "needs a command"},
        {"recent add a.png --cutout frob", "is none of"},
        {"library use . --library x", "--library"},
        {"settings frob", "There is no setting “frob”."},
        {"panel --tab frob", "is none of"},
        {"cutout a.png", "--output is required"},
        {"cutout a.png --output b.png --edge 1.5", "“1.5” is no edge."},
        {"cutout a.png --output b.png --edge nan", "“nan” is no edge."},
    };
    for (const auto& [words, told] : cases) {
        const Ended ended = json(QString::fromUtf8(words).split(u' '));
        EXPECT_EQ(ended.status, 2) << words;
        EXPECT_THAT(ended.err.toStdString(), testing::HasSubstr(told)) << words;
        EXPECT_THAT(ended.error().toStdString(), testing::HasSubstr(told)) << words;
        EXPECT_EQ(run(QString::fromUtf8(words).split(u' ')).out, QByteArray()) << words;
    }
    EXPECT_FALSE(std::filesystem::exists(root())) << "wrong words touch nothing";
}

TEST_F(UsageTest, HelpAndVersionAreDone) {
    for (const char* words : {"--help", "--version", "list --help", "recent add --help", "list --version"}) {
        const Ended ended = run(QString::fromUtf8(words).split(u' '));
        EXPECT_EQ(ended.status, 0) << words;
        EXPECT_FALSE(ended.out.isEmpty()) << words;
    }
}

TEST_F(UsageTest, GlobalOptionsStandBeforeAndAfterTheCommand) {
    for (const char* words :
         {"--json --library one library", "library --library one --json", "--json library --library=one"}) {
        const Ended ended = run(QString::fromUtf8(words).split(u' '));
        EXPECT_EQ(ended.status, 0) << words;
        EXPECT_EQ(ended.object()["root"_L1].toString(), in("one/Quillary")) << words;
    }
}

TEST_F(UsageTest, WordsThatLookOddAreTakenAsTheyAre) {
    const QString file = saved("[a,b].png");
    EXPECT_TRUE(file.endsWith("/[a,b].png"_L1));
    picture("[x]/deep.png");
    EXPECT_EQ(json({u"save"_s, u"[x]"_s}).object()["saved"_L1].toArray().size(), 1);
    QString renamed = file;
    for (const char* name : {"[c,d]", "-5", "a\nb"}) {
        renamed = column(json({u"rename"_s, renamed, QLatin1StringView(name)}).array(), "path").value(0);
        EXPECT_TRUE(renamed.endsWith(QLatin1StringView(name).toString().replace(u'\n', u'-') + u".png"_s)) << name;
    }
    picture("-dash.png");
    EXPECT_EQ(run({u"save"_s, u"--"_s, u"-dash.png"_s}).status, 0);
}

TEST_F(UsageTest, NoDisplayIsAClearText) {
    const Ended paste = json({u"paste"_s});
    EXPECT_EQ(paste.status, 1);
    EXPECT_EQ(paste.error(), u"There is no display to talk to."_s);

    QProcess process;
    auto variables = environment();
    variables.insert(u"DISPLAY"_s, u":4711"_s);
    process.setProcessEnvironment(variables);
    process.start(program(), {u"--json"_s, u"paste"_s});
    ASSERT_TRUE(process.waitForFinished(longestRun));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(QJsonDocument::fromJson(process.readAllStandardOutput()).isObject());
}

TEST_F(UsageTest, CompletionKnowsCommandsOptionsAndValues) {
    const Ended script = run({u"completion"_s, u"bash"_s});
    ASSERT_EQ(script.status, 0);
    writeFile(m_folder / "completion", script.out.toStdString() + R"(
try() { COMP_WORDS=(quillary "$@"); COMP_CWORD=$#; _quillary; echo "${COMPREPLY[*]}"; }
)");
    const std::pair<const char*, const char*> cases[] = {
        {"sa", "save"},
        {"list ''", "images videos audio blocks recent builtin"},
        {"list --sort ''", "newest name shortest longest"},
        {"--json list images --fa", "--favorites"},
        {"list images --js", "--json"},
        {"library ''", "use default copy"},
        {"recent ''", "add prune"},
        {"settings open", "openOnLibrary"},
        {"intake ''", ""},
        {"panel --shelf v", "videos"},
    };
    for (const auto& [typed, offered] : cases) {
        const QString shell = u"source completion; try "_s + QString::fromUtf8(typed);
        EXPECT_EQ(start(u"bash"_s, {u"-c"_s, shell}).out.trimmed().toStdString(), offered) << typed;
    }
    for (const char* shell : {"zsh", "fish"})
        EXPECT_THAT(run({u"completion"_s, QLatin1StringView(shell)}).out.toStdString(),
                    testing::AllOf(testing::HasSubstr("vectorLongEdge"), testing::HasSubstr("newest name")))
            << shell;
}

} // namespace

} // namespace quillary::test
