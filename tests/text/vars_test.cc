#include "text/vars.h"

#include <map>
#include <regex>

#include "tests/support/test.h"

static std::string Substituted(Vars const& vars, char const* text, int keep_unknown) {
    TVarr<char> out(1);
    out.App('#');
    char const* const result = vars.Substitute(out, text, keep_unknown);
    EXPECT_EQ(out.Get(), result);
    EXPECT_EQ(std::strlen(result) + 1, out.Len());
    return result;
}

// By a regular expression: a name in braces that may stay open, or one that may swallow a brace.
static std::string Model(std::map<std::string, std::string> const& vars, std::string text,
                         bool keep) {
    static std::regex const reference(R"(\$(\{([^}]*)\}?|(\w*)\}?))");
    std::string result;
    for (std::smatch m; std::regex_search(text, m, reference); text = m.suffix()) {
        std::string const name = m.str(2) + m.str(3);
        auto const known = vars.find(name);
        std::string value = known != vars.end() ? known->second : "";
        if (keep && known == vars.end()) value = m[2].matched ? m.str() : '$' + name;
        result += m.prefix().str() + (name.empty() ? "$" : value);
    }
    return result + text;
}

TEST(Vars, SubstituteAgreesWithAModel) {
    std::map<std::string, std::string> const known = {
        {"a", "1"}, {"b_", "$a}"}, {"", "no"}, {"2", ""}};
    Vars vars;
    for (auto const& [name, value] : known) vars.Add(name.c_str(), value.c_str());
    vars.Add(2, nullptr);
    std::mt19937 random(16);
    for (int round = 0; round < 20000; ++round) {
        std::string const text = RandomText(random, 9, "$$${}ab_2. ");
        bool const keep = round % 2 != 0;
        ASSERT_EQ(Model(known, text, keep), Substituted(vars, text.c_str(), keep)) << text;
    }
}

TEST(Vars, AddReadsSettings) {
    char const* const rows[][3] = {{"::a=1:: \tb = \n2 ", "%{b }|%a|%b", "2 |1|"},
                                   {"a=x=y:=z: :%a", "%a|%3|%4|%{}", "x=y||x=y|%"},
                                   {"a=1:a=%a%a:b=%later:later=2", "%a|%b|%later", "11||2"}};
    for (auto const& [settings, text, want] : rows) {
        Vars vars('%');
        vars.Add(nullptr), vars.Add(settings);
        Vars const copy(vars);
        vars.Add("a", "later");
        EXPECT_EQ(want, Substituted(copy, text, 0)) << settings;
    }
}
