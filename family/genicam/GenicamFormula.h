#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// A formula of a description's SwissKnife and Converter nodes: read and checked before the GenICam
// library sees it, written again so that it cannot trap, and evaluated on its own where the library
// would hide a failure.
//
// The GenICam library evaluates integer formulas with the processor's division, which traps on the
// most negative number divided by -1, and it answers 0 without a word for a division by zero and for a
// formula it cannot read. A formula is therefore parsed here first (an error names the position), its
// integer divisions are written so that the trap cannot happen (trapFree), and before a value that
// depends on a division is read, the formula is evaluated here too, to tell a division by zero.
//
// The language: numbers (decimal, 0x hex, with a fraction or exponent), variables (names, also with dots),
// E and PI, the functions SGN NEG ATAN COS SIN TAN ABS EXP LN LG SQRT TRUNC FLOOR CEIL ROUND ASIN ACOS,
// parentheses, unary - + ~ !, and the binary operators by rising precedence: ?: || && | ^ & (= <>)
// (< > <= >=) (<< >>) (+ -) (* / %) **.
class Formula
{
public:
    // The longest formula and the deepest nesting read; no description comes near either.
    static constexpr std::size_t kMaxLength = 65536;
    static constexpr int kMaxDepth = 200;

    struct Number
    {
        bool integer = true;
        std::int64_t i = 0;
        double d = 0.0;
        double asDouble() const { return integer ? static_cast<double>(i) : d; }
    };
    // The value of a variable, or false when it cannot be had (problem then says why).
    using Variables = std::function<bool(const std::string& name, Number* value, std::string* problem)>;

    // The formula in text, or nothing with the reason ("unexpected ')' at character 7").
    static std::optional<Formula> parse(const std::string& text, std::string* error);

    // The names of the variables, each once, in the order they first appear.
    std::vector<std::string> variables() const;
    // Whether the formula divides or takes a remainder anywhere.
    bool divides() const;
    // The formula written out again, fully parenthesised; integer divisions and remainders in a form
    // whose division never sees -1 (X / -1 is written as 0 - X, X % -1 as 0) and that reads the same.
    std::string trapFree() const;
    // The value, in integer arithmetic (wrapping, as the library's) or in floating point; false with the
    // reason on a division by zero, a result that is not a number, or a variable that cannot be had.
    bool evaluate(const Variables& variables, bool integer, Number* result, std::string* problem) const;

private:
    enum class Op : std::uint8_t {
        Number,
        Variable,
        Negate,
        Plus,
        Not,
        Complement,
        Function,
        Power,
        Multiply,
        Divide,
        Remainder,
        Add,
        Subtract,
        ShiftLeft,
        ShiftRight,
        Less,
        Greater,
        LessOrEqual,
        GreaterOrEqual,
        Equal,
        NotEqual,
        BitAnd,
        BitXor,
        BitOr,
        And,
        Or,
        Choice,
    };
    struct Node
    {
        Op op = Op::Number;
        int a = -1, b = -1, c = -1; // operands (node indexes)
        Number number;
        std::string name; // variable or function
    };
    class Parser;

    bool evaluateNode(int index, const Variables& variables, bool integer, Number* result,
                      std::string* problem, int depth) const;
    void write(int index, std::string& out) const;

    std::vector<Node> m_nodes; // operands before the nodes that use them; the last one is the root
    std::string m_text;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
