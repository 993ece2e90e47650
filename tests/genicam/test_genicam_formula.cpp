// Formulas of descriptions: read and checked before the GenICam library sees them, written again so that
// its integer division cannot trap, and evaluated on their own. The GenICam library's evaluator is the
// reference: every formula here must give the library's value, and the rewritten formula the same value
// in the library as ours.
#include "family/genicam/GenicamFormula.h"

#include <arv.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

using vorn::core::models::genicam::Formula;

namespace {

const std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

// Our value of a formula with integer variables, or the problem.
std::string ours(const std::string& text, const std::map<std::string, std::int64_t>& values, bool integer,
                 Formula::Number* value)
{
    std::string error;
    const auto formula = Formula::parse(text, &error);
    if (!formula)
        return "parse: " + error;
    std::string problem;
    const bool ok = formula->evaluate(
        [&](const std::string& name, Formula::Number* v, std::string* why) {
            auto it = values.find(name);
            if (it == values.end()) {
                *why = "no variable " + name;
                return false;
            }
            *v = Formula::Number{true, it->second, 0.0};
            return true;
        },
        integer, value, &problem);
    return ok ? std::string() : problem;
}

struct Library
{
    explicit Library(const std::string& text) : evaluator(arv_evaluator_new(text.c_str())) {}
    ~Library() { g_object_unref(evaluator); }
    std::int64_t integer(const std::map<std::string, std::int64_t>& values)
    {
        for (const auto& [name, v] : values)
            arv_evaluator_set_int64_variable(evaluator, name.c_str(), v);
        GError* error = nullptr;
        const std::int64_t v = arv_evaluator_evaluate_as_int64(evaluator, &error);
        g_clear_error(&error);
        return v;
    }
    ArvEvaluator* evaluator;
};

TEST(GenicamFormula, readsTheLanguageAndNamesItsVariables)
{
    std::string error;
    const auto f = Formula::parse("(A + B.Max) * 0x10 / C ? SGN(-A) : ROUND(PI * 2.5e1, 2) ** 2", &error);
    ASSERT_TRUE(f) << error;
    EXPECT_EQ(f->variables(), (std::vector<std::string>{"A", "B.Max", "C"}));
    EXPECT_TRUE(f->divides());
    EXPECT_FALSE(Formula::parse("1 + 2 * 3", &error)->divides());
}

TEST(GenicamFormula, saysWhereAFormulaDoesNotParse)
{
    std::string error;
    EXPECT_FALSE(Formula::parse("10 +* (", &error));
    EXPECT_EQ(error, "unexpected '*' at character 5");
    EXPECT_FALSE(Formula::parse("(1 + 2", &error));
    EXPECT_EQ(error, "expected ')' at character 7");
    EXPECT_FALSE(Formula::parse("", &error));
    EXPECT_EQ(error, "the formula ends too early");
    EXPECT_FALSE(Formula::parse("FOO(1)", &error));
    EXPECT_EQ(error, "unknown function FOO at character 1");
    EXPECT_FALSE(Formula::parse("1 2", &error));
    EXPECT_EQ(error, "unexpected '2' at character 3");
    EXPECT_FALSE(Formula::parse("0x", &error));
    EXPECT_EQ(error, "a hexadecimal number without digits at character 1");
    EXPECT_FALSE(Formula::parse("A ? B", &error));
    EXPECT_EQ(error, "expected ':' at character 6");
    EXPECT_FALSE(Formula::parse("1 $ 2", &error));
    EXPECT_EQ(error, "unexpected '$' at character 3");
}

TEST(GenicamFormula, refusesNestingAndLengthBeyondItsBounds)
{
    std::string error;
    EXPECT_FALSE(Formula::parse(std::string(100000, '('), &error));
    EXPECT_EQ(error, "the formula is longer than 65536 characters");
    EXPECT_FALSE(Formula::parse(std::string(300, '(') + "1" + std::string(300, ')'), &error));
    EXPECT_EQ(error, "the formula nests deeper than 200 levels");
    EXPECT_FALSE(Formula::parse(std::string(300, '-') + "1", &error));
    EXPECT_EQ(error, "the formula nests deeper than 200 levels");
    EXPECT_TRUE(Formula::parse(std::string(150, '(') + "1" + std::string(150, ')'), &error)) << error;
}

TEST(GenicamFormula, tellsADivisionByZeroThatTheLibraryAnswersWithZero)
{
    Formula::Number v;
    EXPECT_EQ(ours("10 / X", {{"X", 0}}, true, &v), "division by zero");
    EXPECT_EQ(ours("10 % X", {{"X", 0}}, true, &v), "division by zero");
    EXPECT_EQ(ours("10.5 / X", {{"X", 0}}, false, &v), "division by zero");
    // The library evaluates every part, the branch not taken too, and then answers 0 for the whole.
    EXPECT_EQ(ours("X = 0 ? 7 : 10 / X", {{"X", 0}}, true, &v), "division by zero");
    EXPECT_EQ(Library("X = 0 ? 7 : 10 / X").integer({{"X", 0}}), 0)
        << "the library's answer, without an error";
    EXPECT_EQ(Library("10 / X").integer({{"X", 0}}), 0);
}

TEST(GenicamFormula, theRewrittenFormulaCannotTrapAndReadsTheSame)
{
    std::string error;
    const auto f = Formula::parse("X / Y + X % Y", &error);
    ASSERT_TRUE(f) << error;
    // Evaluated by the library itself: the original would stop the process here.
    Library rewritten(f->trapFree());
    EXPECT_EQ(rewritten.integer({{"X", kMin}, {"Y", -1}}), kMin);
    EXPECT_EQ(rewritten.integer({{"X", 100}, {"Y", -7}}), 100 / -7 + 100 % -7);
    EXPECT_EQ(rewritten.integer({{"X", -100}, {"Y", 7}}), -100 / 7 + -100 % 7);
    // The wrapped quotient is no value to show: our evaluation says so.
    Formula::Number v;
    EXPECT_EQ(ours("X / Y + X % Y", {{"X", kMin}, {"Y", -1}}, true, &v),
              "the quotient does not fit in 64 bits");
    EXPECT_EQ(ours("X % Y", {{"X", kMin}, {"Y", -1}}, true, &v), "");
    EXPECT_EQ(v.i, 0);
    // A constant divisor needs no guard; a constant -1 needs no division.
    EXPECT_EQ(Formula::parse("X / 4", &error)->trapFree(), "(X / 4)");
    EXPECT_EQ(Formula::parse("X / -1", &error)->trapFree(), "(0 - X)");
    EXPECT_EQ(Formula::parse("X % -1", &error)->trapFree(), "0");
}

// Random formulas over two variables: ours and the library's evaluator agree on every value, and the
// rewritten formula gives the library's own value of the original.
TEST(GenicamFormula, agreesWithTheLibraryOnRandomFormulas)
{
    std::mt19937_64 random(11);
    const char* const operators[] = {"+",  "-", "*",  "/", "%", "&",  "|",  "^",  "<<",
                                     ">>", "=", "<>", "<", ">", "<=", ">=", "&&", "||"};
    auto operand = [&]() -> std::string {
        switch (random() % 7) {
        case 4:
            return "-X";
        case 5:
            return "(Y > 0 ? X : Y)";
        case 6:
            return "2 ** " + std::to_string(random() % 5);
        case 0:
            return "X";
        case 1:
            return "Y";
        case 2:
            return std::to_string(static_cast<int>(random() % 40) - 20);
        default:
            return "0x" + std::to_string(random() % 100);
        }
    };
    int compared = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text = operand();
        const int terms = 1 + static_cast<int>(random() % 5);
        for (int t = 0; t < terms; ++t) {
            const std::string op = operators[random() % (sizeof operators / sizeof operators[0])];
            // Shifts by negative or large counts are undefined in the library's C code.
            const std::string right = op == "<<" || op == ">>" ? std::to_string(random() % 8) : operand();
            text = random() % 2 ? "(" + text + " " + op + " " + right + ")" : text + " " + op + " " + right;
        }
        const std::map<std::string, std::int64_t> values{
            {"X", static_cast<std::int64_t>(random() % 2000) - 1000},
            {"Y", static_cast<std::int64_t>(random() % 20) - 10}};
        Formula::Number value;
        const std::string problem = ours(text, values, true, &value);
        ASSERT_TRUE(problem.empty() || problem == "division by zero") << text << ": " << problem;
        if (!problem.empty())
            continue;
        std::string error;
        const auto f = Formula::parse(text, &error);
        EXPECT_EQ(Library(text).integer(values), value.i) << text;
        EXPECT_EQ(Library(f->trapFree()).integer(values), value.i) << f->trapFree();
        ++compared;
    }
    EXPECT_GT(compared, 2000);
}

} // namespace
