#include "family/genicam/GenicamFormula.h"

#include <cctype>
#include <cmath>
#include <cstring>
#include <limits>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

struct Token
{
    enum Kind { End, Number, Name, Operator } kind = End;
    std::string text;
    Formula::Number number;
    std::size_t position = 0;
};

const char* const kFunctions[] = {"SGN", "NEG",  "ATAN",  "COS",   "SIN",  "TAN",   "ABS",  "EXP", "LN",
                                  "LG",  "SQRT", "TRUNC", "FLOOR", "CEIL", "ROUND", "ASIN", "ACOS"};

bool isFunction(const std::string& name)
{
    for (const char* f : kFunctions)
        if (name == f)
            return true;
    return false;
}

std::string at(std::size_t position)
{
    return " at character " + std::to_string(position + 1);
}

// Wrapping integer arithmetic, as the library's 64-bit integers behave on every machine it runs on.
std::int64_t wrap(std::uint64_t v)
{
    return static_cast<std::int64_t>(v);
}

} // namespace

class Formula::Parser
{
public:
    Parser(const std::string& text, std::vector<Node>& nodes) : m_text(text), m_nodes(nodes) {}

    bool parse(std::string* error)
    {
        next();
        const int root = expression(0);
        if (root < 0) {
            *error = m_error;
            return false;
        }
        if (m_token.kind != Token::End) {
            *error = "unexpected '" + m_token.text + "'" + at(m_token.position);
            return false;
        }
        return true;
    }

private:
    int fail(const std::string& message)
    {
        if (m_error.empty())
            m_error = message;
        return -1;
    }

    int add(Op op, int a = -1, int b = -1, int c = -1)
    {
        Node node;
        node.op = op;
        node.a = a;
        node.b = b;
        node.c = c;
        m_nodes.push_back(std::move(node));
        return static_cast<int>(m_nodes.size()) - 1;
    }

    bool accept(const char* op)
    {
        if (m_token.kind != Token::Operator || m_token.text != op)
            return false;
        next();
        return true;
    }

    void next()
    {
        const std::string& s = m_text;
        std::size_t& i = m_position;
        while (i < s.size() && std::isspace(static_cast<unsigned char>(s[i])))
            ++i;
        m_token = Token();
        m_token.position = i;
        if (i >= s.size())
            return;
        const char c = s[i];
        if (std::isdigit(static_cast<unsigned char>(c)) ||
            (c == '.' && i + 1 < s.size() && std::isdigit(static_cast<unsigned char>(s[i + 1])))) {
            readNumber();
            return;
        }
        if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
            std::size_t end = i;
            while (end < s.size() &&
                   (std::isalnum(static_cast<unsigned char>(s[end])) || s[end] == '_' || s[end] == '.'))
                ++end;
            m_token.kind = Token::Name;
            m_token.text = s.substr(i, end - i);
            i = end;
            return;
        }
        static const char* const twoCharacter[] = {"**", "<<", ">>", "<=", ">=", "<>", "&&", "||"};
        for (const char* op : twoCharacter) {
            if (s.compare(i, 2, op) == 0) {
                m_token.kind = Token::Operator;
                m_token.text = op;
                i += 2;
                return;
            }
        }
        if (std::strchr("+-*/%&|^~!<>=?:(),", c)) {
            m_token.kind = Token::Operator;
            m_token.text = std::string(1, c);
            ++i;
            return;
        }
        m_token.kind = Token::Operator;
        m_token.text = std::string(1, c);
        ++i;
    }

    void readNumber()
    {
        const std::string& s = m_text;
        std::size_t& i = m_position;
        const std::size_t start = i;
        m_token.kind = Token::Number;
        if (s[i] == '0' && i + 1 < s.size() && (s[i + 1] == 'x' || s[i + 1] == 'X')) {
            i += 2;
            std::uint64_t value = 0;
            bool any = false;
            while (i < s.size() && std::isxdigit(static_cast<unsigned char>(s[i]))) {
                const char h = static_cast<char>(std::tolower(static_cast<unsigned char>(s[i])));
                value = (value << 4) | static_cast<unsigned>(h <= '9' ? h - '0' : h - 'a' + 10);
                any = true;
                ++i;
            }
            m_token.number.i = wrap(value);
            m_token.text = any ? s.substr(start, i - start) : std::string();
            return;
        }
        bool fraction = false;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
            ++i;
        if (i < s.size() && s[i] == '.') {
            fraction = true;
            ++i;
            while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
                ++i;
        }
        if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
            std::size_t j = i + 1;
            if (j < s.size() && (s[j] == '+' || s[j] == '-'))
                ++j;
            if (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) {
                fraction = true;
                i = j;
                while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
                    ++i;
            }
        }
        m_token.text = s.substr(start, i - start);
        if (fraction) {
            m_token.number.integer = false;
            m_token.number.d = std::strtod(m_token.text.c_str(), nullptr);
            return;
        }
        // Decimal integers wrap as the library reads them.
        std::uint64_t value = 0;
        for (char d : m_token.text)
            value = value * 10 + static_cast<unsigned>(d - '0');
        m_token.number.i = wrap(value);
    }

    // Binary operators by level, the loosest first.
    static int levelOf(const std::string& op, Op* kind)
    {
        struct Entry
        {
            const char* text;
            int level;
            Op op;
        };
        static const Entry entries[] = {
            {"||", 1, Op::Or},
            {"&&", 2, Op::And},
            {"|", 3, Op::BitOr},
            {"^", 4, Op::BitXor},
            {"&", 5, Op::BitAnd},
            {"=", 6, Op::Equal},
            {"<>", 6, Op::NotEqual},
            {"<", 7, Op::Less},
            {">", 7, Op::Greater},
            {"<=", 7, Op::LessOrEqual},
            {">=", 7, Op::GreaterOrEqual},
            {"<<", 8, Op::ShiftLeft},
            {">>", 8, Op::ShiftRight},
            {"+", 9, Op::Add},
            {"-", 9, Op::Subtract},
            {"*", 10, Op::Multiply},
            {"/", 10, Op::Divide},
            {"%", 10, Op::Remainder},
            {"**", 11, Op::Power},
        };
        for (const Entry& e : entries) {
            if (op == e.text) {
                *kind = e.op;
                return e.level;
            }
        }
        return 0;
    }

    // A whole expression: the choice a ? b : c, binding loosest.
    int expression(int depth)
    {
        if (depth > kMaxDepth)
            return fail("the formula nests deeper than " + std::to_string(kMaxDepth) + " levels");
        const int condition = binary(1, depth);
        if (condition < 0 || !(m_token.kind == Token::Operator && m_token.text == "?"))
            return condition;
        next();
        const int then = expression(depth + 1);
        if (then < 0)
            return -1;
        if (!accept(":"))
            return fail("expected ':'" + at(m_token.position));
        const int otherwise = expression(depth + 1);
        if (otherwise < 0)
            return -1;
        return add(Op::Choice, condition, then, otherwise);
    }

    // Operators of the level and tighter, left to right; ** binds to the right.
    int binary(int level, int depth)
    {
        if (level > 11)
            return unary(depth);
        int left = binary(level + 1, depth);
        while (left >= 0 && m_token.kind == Token::Operator) {
            Op op = Op::Number;
            if (levelOf(m_token.text, &op) != level)
                break;
            next();
            const int right = level == 11 ? binary(level, depth + 1) : binary(level + 1, depth);
            if (right < 0)
                return -1;
            left = add(op, left, right);
            if (level == 11)
                break;
        }
        return left;
    }

    int unary(int depth)
    {
        if (depth > kMaxDepth)
            return fail("the formula nests deeper than " + std::to_string(kMaxDepth) + " levels");
        static const struct
        {
            const char* text;
            Op op;
        } prefixes[] = {{"-", Op::Negate}, {"+", Op::Plus}, {"~", Op::Complement}, {"!", Op::Not}};
        for (const auto& prefix : prefixes) {
            if (m_token.kind == Token::Operator && m_token.text == prefix.text) {
                next();
                const int operand = unary(depth + 1);
                if (operand < 0)
                    return -1;
                // A negative number is a number: "-1" divides without a guard.
                Node& last = m_nodes[static_cast<std::size_t>(operand)];
                if (prefix.op == Op::Negate && last.op == Op::Number &&
                    operand + 1 == static_cast<int>(m_nodes.size())) {
                    if (last.number.integer)
                        last.number.i = wrap(0 - static_cast<std::uint64_t>(last.number.i));
                    else
                        last.number.d = -last.number.d;
                    return operand;
                }
                return add(prefix.op, operand);
            }
        }
        return primary(depth);
    }

    int primary(int depth)
    {
        const Token token = m_token;
        switch (token.kind) {
        case Token::End:
            return fail("the formula ends too early");
        case Token::Number: {
            if (token.text.empty())
                return fail("a hexadecimal number without digits" + at(token.position));
            next();
            const int index = add(Op::Number);
            m_nodes[static_cast<std::size_t>(index)].number = token.number;
            return index;
        }
        case Token::Name: {
            next();
            if (accept("(")) {
                if (!isFunction(token.text))
                    return fail("unknown function " + token.text + at(token.position));
                const int a = expression(depth + 1);
                if (a < 0)
                    return -1;
                int b = -1;
                if (token.text == "ROUND" && accept(",")) {
                    b = expression(depth + 1);
                    if (b < 0)
                        return -1;
                }
                if (!accept(")"))
                    return fail("expected ')'" + at(m_token.position));
                const int index = add(Op::Function, a, b);
                m_nodes[static_cast<std::size_t>(index)].name = token.text;
                return index;
            }
            const int index = add(Op::Variable);
            m_nodes[static_cast<std::size_t>(index)].name = token.text;
            return index;
        }
        case Token::Operator:
            if (token.text == "(") {
                next();
                const int inner = expression(depth + 1);
                if (inner < 0)
                    return -1;
                if (!accept(")"))
                    return fail("expected ')'" + at(m_token.position));
                return inner;
            }
            return fail("unexpected '" + token.text + "'" + at(token.position));
        }
        return -1;
    }

    const std::string& m_text;
    std::vector<Node>& m_nodes;
    std::size_t m_position = 0;
    Token m_token;
    std::string m_error;
};

std::optional<Formula> Formula::parse(const std::string& text, std::string* error)
{
    if (text.size() > kMaxLength) {
        *error = "the formula is longer than " + std::to_string(kMaxLength) + " characters";
        return std::nullopt;
    }
    Formula formula;
    formula.m_text = text;
    Parser parser(text, formula.m_nodes);
    if (!parser.parse(error))
        return std::nullopt;
    return formula;
}

std::vector<std::string> Formula::variables() const
{
    std::vector<std::string> names;
    for (const Node& node : m_nodes) {
        if (node.op != Op::Variable || node.name == "E" || node.name == "PI")
            continue;
        bool known = false;
        for (const std::string& name : names)
            known = known || name == node.name;
        if (!known)
            names.push_back(node.name);
    }
    return names;
}

bool Formula::divides() const
{
    for (const Node& node : m_nodes)
        if (node.op == Op::Divide || node.op == Op::Remainder)
            return true;
    return false;
}

std::string Formula::trapFree() const
{
    std::string out;
    if (!m_nodes.empty())
        write(static_cast<int>(m_nodes.size()) - 1, out);
    return out;
}

namespace {

const char* symbolOf(int op)
{
    static const char* const symbols[] = {
        "",   "",  "-", "+",  "!",  "~", "",   "**", "*", "/", "%",  "+",  "-", "<<",
        ">>", "<", ">", "<=", ">=", "=", "<>", "&",  "^", "|", "&&", "||", "?"};
    return symbols[op];
}

} // namespace

// Depth-first over a tree whose depth the parser bounded.
void Formula::write(int index, std::string& out) const
{
    const Node& node = m_nodes[static_cast<std::size_t>(index)];
    switch (node.op) {
    case Op::Number:
        if (node.number.integer) {
            // The most negative number has no decimal literal of its own.
            if (node.number.i == std::numeric_limits<std::int64_t>::min())
                out += "(-9223372036854775807 - 1)";
            else if (node.number.i < 0)
                out += "(" + std::to_string(node.number.i) + ")";
            else
                out += std::to_string(node.number.i);
        } else {
            char buffer[40];
            std::snprintf(buffer, sizeof buffer, "%.17g", node.number.d);
            out += buffer;
            if (!std::strpbrk(buffer, ".eEn"))
                out += ".0";
        }
        return;
    case Op::Variable:
        out += node.name;
        return;
    case Op::Negate:
    case Op::Plus:
    case Op::Not:
    case Op::Complement:
        out += "(";
        out += symbolOf(static_cast<int>(node.op));
        write(node.a, out);
        out += ")";
        return;
    case Op::Function:
        out += node.name + "(";
        write(node.a, out);
        if (node.b >= 0) {
            out += ", ";
            write(node.b, out);
        }
        out += ")";
        return;
    case Op::Choice:
        out += "(";
        write(node.a, out);
        out += " ? ";
        write(node.b, out);
        out += " : ";
        write(node.c, out);
        out += ")";
        return;
    case Op::Divide:
    case Op::Remainder: {
        const Node& divisor = m_nodes[static_cast<std::size_t>(node.b)];
        const bool constant = divisor.op == Op::Number;
        const bool minusOne = constant && divisor.number.integer && divisor.number.i == -1;
        std::string x, y;
        write(node.a, x);
        write(node.b, y);
        if (minusOne) {
            out += node.op == Op::Divide ? "(0 - " + x + ")" : std::string("0");
            return;
        }
        if (constant) {
            out += "(" + x + (node.op == Op::Divide ? " / " : " % ") + y + ")";
            return;
        }
        // The division itself never sees -1: the divisor becomes 1 there, and the term is dropped.
        const std::string safe = "(" + y + " + (" + y + " = -1) * 2)";
        if (node.op == Op::Divide)
            out += "((" + y + " = -1) * (0 - " + x + ") + (" + y + " <> -1) * (" + x + " / " + safe + "))";
        else
            out += "((" + y + " <> -1) * (" + x + " % " + safe + "))";
        return;
    }
    default:
        out += "(";
        write(node.a, out);
        out += " ";
        out += symbolOf(static_cast<int>(node.op));
        out += " ";
        write(node.b, out);
        out += ")";
        return;
    }
}

bool Formula::evaluate(const Variables& variables, bool integer, Number* result, std::string* problem) const
{
    if (m_nodes.empty()) {
        *problem = "the formula is empty";
        return false;
    }
    Number value;
    if (!evaluateNode(static_cast<int>(m_nodes.size()) - 1, variables, integer, &value, problem, 0))
        return false;
    if (integer && !value.integer) {
        if (!std::isfinite(value.d)) {
            *problem = "the formula's result is not a number";
            return false;
        }
        value.integer = true;
        value.i = static_cast<std::int64_t>(value.d);
    } else if (!integer && !value.integer && !std::isfinite(value.d)) {
        *problem = "the formula's result is not a number";
        return false;
    }
    *result = value;
    return true;
}

bool Formula::evaluateNode(int index, const Variables& variables, bool integer, Number* result,
                           std::string* problem, int depth) const
{
    const Node& node = m_nodes[static_cast<std::size_t>(index)];
    auto operand = [&](int i, Number* out) {
        return evaluateNode(i, variables, integer, out, problem, depth + 1);
    };
    Number a, b;
    Number& r = *result;
    r = Number();
    switch (node.op) {
    case Op::Number:
        r = node.number;
        return true;
    case Op::Variable:
        if (node.name == "PI" || node.name == "E") {
            r.integer = false;
            r.d = node.name == "PI" ? 3.14159265358979323846 : 2.71828182845904523536;
            return true;
        }
        return variables(node.name, result, problem);
    case Op::Choice: {
        // The library evaluates every part of a formula, the branch not taken too, and a division by
        // zero anywhere makes its whole answer 0: so does this evaluation.
        Number c;
        if (!operand(node.a, &a) || !operand(node.b, &b) || !operand(node.c, &c))
            return false;
        r = (a.integer ? a.i != 0 : a.d != 0.0) ? b : c;
        return true;
    }
    case Op::And:
    case Op::Or: {
        if (!operand(node.a, &a) || !operand(node.b, &b))
            return false;
        const bool left = a.integer ? a.i != 0 : a.d != 0.0;
        const bool right = b.integer ? b.i != 0 : b.d != 0.0;
        r.i = node.op == Op::And ? (left && right) : (left || right);
        return true;
    }
    default:
        break;
    }
    if (!operand(node.a, &a) || (node.b >= 0 && !operand(node.b, &b)))
        return false;
    const bool ints = a.integer && (node.b < 0 || b.integer);
    const double x = a.asDouble();
    const double y = b.asDouble();
    switch (node.op) {
    case Op::Negate:
        if (a.integer)
            r.i = wrap(0 - static_cast<std::uint64_t>(a.i));
        else
            r = Number{false, 0, -a.d};
        return true;
    case Op::Plus:
        r = a;
        return true;
    case Op::Not:
        r.i = (a.integer ? a.i == 0 : a.d == 0.0) ? 1 : 0;
        return true;
    case Op::Complement:
        r.i = ~(a.integer ? a.i : static_cast<std::int64_t>(a.d));
        return true;
    case Op::Function: {
        const std::string& f = node.name;
        double v = x;
        if (f == "SGN") {
            r.i = x > 0 ? 1 : x < 0 ? -1 : 0;
            return true;
        }
        if (f == "NEG" || f == "ABS") {
            if (a.integer) {
                const bool negate = f == "NEG" || a.i < 0;
                r.i = negate ? wrap(0 - static_cast<std::uint64_t>(a.i)) : a.i;
                return true;
            }
            v = f == "NEG" ? -x : std::fabs(x);
        } else if (f == "ATAN")
            v = std::atan(x);
        else if (f == "COS")
            v = std::cos(x);
        else if (f == "SIN")
            v = std::sin(x);
        else if (f == "TAN")
            v = std::tan(x);
        else if (f == "EXP")
            v = std::exp(x);
        else if (f == "LN")
            v = std::log(x);
        else if (f == "LG")
            v = std::log10(x);
        else if (f == "SQRT")
            v = std::sqrt(x);
        else if (f == "TRUNC")
            v = std::trunc(x);
        else if (f == "FLOOR")
            v = std::floor(x);
        else if (f == "CEIL")
            v = std::ceil(x);
        else if (f == "ASIN")
            v = std::asin(x);
        else if (f == "ACOS")
            v = std::acos(x);
        else if (f == "ROUND") {
            const double scale = node.b >= 0 ? std::pow(10.0, y) : 1.0;
            v = std::round(x * scale) / scale;
        }
        r = Number{false, 0, v};
        return true;
    }
    default:
        break;
    }
    if (ints) {
        const auto ux = static_cast<std::uint64_t>(a.i);
        const auto uy = static_cast<std::uint64_t>(b.i);
        switch (node.op) {
        case Op::Add:
            r.i = wrap(ux + uy);
            return true;
        case Op::Subtract:
            r.i = wrap(ux - uy);
            return true;
        case Op::Multiply:
            r.i = wrap(ux * uy);
            return true;
        case Op::Divide:
        case Op::Remainder:
            if (b.i == 0) {
                *problem = "division by zero";
                return false;
            }
            if (b.i == -1 && a.i == std::numeric_limits<std::int64_t>::min() && node.op == Op::Divide) {
                // The library's answer would wrap to the dividend itself: no value to show.
                *problem = "the quotient does not fit in 64 bits";
                return false;
            }
            if (b.i == -1)
                r.i = node.op == Op::Divide ? wrap(0 - ux) : 0;
            else
                r.i = node.op == Op::Divide ? a.i / b.i : a.i % b.i;
            return true;
        case Op::Power: {
            if (b.i < 0) {
                r = Number{false, 0, std::pow(x, y)};
                return true;
            }
            std::uint64_t power = 1, base = ux;
            for (std::int64_t e = b.i; e > 0; e >>= 1) {
                if (e & 1)
                    power *= base;
                base *= base;
            }
            r.i = wrap(power);
            return true;
        }
        case Op::ShiftLeft:
            r.i = wrap(ux << (uy & 63u));
            return true;
        case Op::ShiftRight:
            r.i = a.i >> (uy & 63u);
            return true;
        case Op::BitAnd:
            r.i = a.i & b.i;
            return true;
        case Op::BitXor:
            r.i = a.i ^ b.i;
            return true;
        case Op::BitOr:
            r.i = a.i | b.i;
            return true;
        default:
            break;
        }
    }
    switch (node.op) {
    case Op::Add:
        r = Number{false, 0, x + y};
        return true;
    case Op::Subtract:
        r = Number{false, 0, x - y};
        return true;
    case Op::Multiply:
        r = Number{false, 0, x * y};
        return true;
    case Op::Divide:
        if (y == 0.0) {
            *problem = "division by zero";
            return false;
        }
        r = Number{false, 0, x / y};
        return true;
    case Op::Remainder:
        if (y == 0.0) {
            *problem = "division by zero";
            return false;
        }
        r = Number{false, 0, std::fmod(x, y)};
        return true;
    case Op::Power:
        r = Number{false, 0, std::pow(x, y)};
        return true;
    case Op::ShiftLeft:
    case Op::ShiftRight:
    case Op::BitAnd:
    case Op::BitXor:
    case Op::BitOr: {
        // Bits of floating-point operands are those of their integer parts.
        const auto ux = static_cast<std::uint64_t>(static_cast<std::int64_t>(x));
        const auto uy = static_cast<std::uint64_t>(static_cast<std::int64_t>(y));
        r.i = node.op == Op::ShiftLeft    ? wrap(ux << (uy & 63u))
              : node.op == Op::ShiftRight ? static_cast<std::int64_t>(x) >> (uy & 63u)
              : node.op == Op::BitAnd     ? wrap(ux & uy)
              : node.op == Op::BitXor     ? wrap(ux ^ uy)
                                          : wrap(ux | uy);
        return true;
    }
    case Op::Less:
        r.i = ints ? a.i < b.i : x < y;
        return true;
    case Op::Greater:
        r.i = ints ? a.i > b.i : x > y;
        return true;
    case Op::LessOrEqual:
        r.i = ints ? a.i <= b.i : x <= y;
        return true;
    case Op::GreaterOrEqual:
        r.i = ints ? a.i >= b.i : x >= y;
        return true;
    case Op::Equal:
        r.i = ints ? a.i == b.i : x == y;
        return true;
    case Op::NotEqual:
        r.i = ints ? a.i != b.i : x != y;
        return true;
    default:
        *problem = "the formula cannot be evaluated";
        return false;
    }
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
