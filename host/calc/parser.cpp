#include "parser.h"

#include "api/function_registry.h"
#include "api/text_codec.h"
#include "api/values.h"
#include "calc_error.h"
#include "call_nodes.h"
#include "case_folding.h"
#include "control_nodes.h"
#include "lexer.h"
#include "operator_nodes.h"
#include "value_nodes.h"

#include <optional>

namespace vdhost::calc {

namespace {

// Precedence levels, loosest first. Not and the unary signs are prefixes at their own levels.
enum class Level { Logical, And, Not, Comparison, Concatenation, Additive, Multiplicative, Power, Unary };

Level tighter(Level level) { return static_cast<Level>(static_cast<int>(level) + 1); }

std::optional<BinaryOperator> binaryOperatorAt(Level level, TokenKind kind) {
    using K = TokenKind;
    using B = BinaryOperator;
    switch (level) {
        case Level::Logical:
            if (kind == K::Or) return B::Or;
            if (kind == K::Xor) return B::Xor;
            break;
        case Level::And:
            if (kind == K::And) return B::And;
            break;
        case Level::Comparison:
            switch (kind) {
                case K::Equal: return B::Equal;
                case K::NotEqual: return B::NotEqual;
                case K::Less: return B::Less;
                case K::LessEqual: return B::LessEqual;
                case K::Greater: return B::Greater;
                case K::GreaterEqual: return B::GreaterEqual;
                default: break;
            }
            break;
        case Level::Concatenation:
            if (kind == K::Ampersand) return B::Concatenate;
            break;
        case Level::Additive:
            if (kind == K::Plus) return B::Add;
            if (kind == K::Minus) return B::Subtract;
            break;
        case Level::Multiplicative:
            if (kind == K::Star) return B::Multiply;
            if (kind == K::Slash) return B::Divide;
            break;
        case Level::Power:
            if (kind == K::Caret) return B::Power;
            break;
        default: break;
    }
    return std::nullopt;
}

// The precedence level of a binary operator; Level::Unary (tighter than all of them) for tokens
// that are not one.
Level levelOf(TokenKind kind) {
    for (Level level : {Level::Logical, Level::And, Level::Comparison, Level::Concatenation, Level::Additive,
                        Level::Multiplicative, Level::Power})
        if (binaryOperatorAt(level, kind)) return level;
    return Level::Unary;
}

std::string utf8(std::u16string_view text) { return utf16ToUtf8(text); }

std::string parameterRange(long min, long max) {
    auto noun = [](long n) { return std::string(n == 1 ? " parameter" : " parameters"); };
    if (max == min) return std::to_string(min) + noun(min);
    if (max < 0) return "at least " + std::to_string(min) + noun(min);
    return std::to_string(min) + " to " + std::to_string(max) + " parameters";
}

CalcError countError(const Token& name, std::u16string_view display, long min, long max, size_t given) {
    return CalcError(CalcError::Kind::Syntax, name.position,
                     utf8(display) + " expects " + parameterRange(min, max) + " but was given " +
                         std::to_string(given));
}

class Parser {
public:
    Parser(std::u16string_view text, SourcePosition start) : lexer_(text, start) { advance(); }

    ParsedCalculation parseAll() {
        NodePtr root = parseExpression();
        if (!current_.is(TokenKind::End)) throw unexpected(current_);
        return {std::move(root), slotCount_};
    }

private:
    // Counts the levels of recursion in flight and refuses to go deeper than kMaxNesting.
    class NestingGuard {
    public:
        NestingGuard(Parser& parser, SourcePosition at) : parser_(parser) {
            if (++parser_.nesting_ > kMaxNesting)
                throw CalcError(CalcError::Kind::Syntax, at,
                                "The calculation is nested too deeply (more than " +
                                    std::to_string(kMaxNesting) + " levels)");
        }
        ~NestingGuard() { --parser_.nesting_; }
        NestingGuard(const NestingGuard&) = delete;
        NestingGuard& operator=(const NestingGuard&) = delete;

    private:
        Parser& parser_;
    };

    void advance() { current_ = lexer_.next(); }
    Token take() {
        Token t = std::move(current_);
        advance();
        return t;
    }
    bool accept(TokenKind kind) {
        if (!current_.is(kind)) return false;
        advance();
        return true;
    }
    void expect(TokenKind kind, const std::string& message) {
        if (!accept(kind)) throw syntaxError(current_, message);
    }

    [[gnu::noinline]] static CalcError problemOf(const Token& t) {
        std::string message = t.kind == TokenKind::UnterminatedText      ? "Unterminated text literal"
                               : t.kind == TokenKind::UnterminatedComment ? "Unterminated comment"
                                                                          : t.problem;
        return CalcError(CalcError::Kind::Syntax, t.position, message);
    }
    // A token the lexer could not read explains itself better than whatever was expected there.
    [[gnu::noinline]] static CalcError syntaxError(const Token& at, const std::string& message) {
        if (at.isError()) return problemOf(at);
        return CalcError(CalcError::Kind::Syntax, at.position, message);
    }
    [[gnu::noinline]] static CalcError unexpected(const Token& t) {
        if (t.isError()) return problemOf(t);
        if (t.is(TokenKind::End)) return CalcError(CalcError::Kind::Syntax, t.position, "Unexpected end of the calculation");
        constexpr size_t kShown = 30;
        std::string shown = utf8(t.source.substr(0, kShown)) + (t.source.size() > kShown ? "..." : "");
        return CalcError(CalcError::Kind::Syntax, t.position, "Unexpected " + shown);
    }

    NodePtr parseExpression() {
        NestingGuard guard(*this, current_.position);
        return parseBinary(Level::Logical);
    }

    // Precedence climbing: one frame per operand rather than one per precedence level, which
    // keeps each level of parentheses cheap on the stack. Operators of one level that follow each
    // other are collected into one chain.
    NodePtr parseBinary(Level loosest) {
        NodePtr left = parseOperand(loosest);
        for (;;) {
            Level level = levelOf(current_.kind);
            if (level < loosest || level == Level::Unary) return left;
            std::vector<ChainNode::Link> links;
            while (auto op = binaryOperatorAt(level, current_.kind)) {
                SourcePosition where = current_.position;
                advance();
                links.push_back(ChainNode::Link{*op, where, parseBinary(tighter(level))});
            }
            left = std::make_unique<ChainNode>(std::move(left), std::move(links));
        }
    }

    // An operand with its prefixes. "not" takes a comparison ("not a = b" is "not ( a = b )") and
    // may only stand where a comparison may; the signs bind tighter than any binary operator.
    NodePtr parseOperand(Level loosest) {
        if (current_.is(TokenKind::Not) && loosest <= Level::Not) return parsePrefix(UnaryOperator::Not, Level::Not);
        if (current_.is(TokenKind::Minus)) return parsePrefix(UnaryOperator::Negate, Level::Unary);
        if (current_.is(TokenKind::Plus)) return parsePrefix(UnaryOperator::Plus, Level::Unary);
        return parsePrimary();
    }

    // "not not x" and "- - x" nest without parentheses, so prefixes count towards the nesting too.
    NodePtr parsePrefix(UnaryOperator op, Level operandLevel) {
        SourcePosition where = current_.position;
        NestingGuard guard(*this, where);
        advance();
        NodePtr operand = op == UnaryOperator::Not ? parseBinary(operandLevel) : parseOperand(operandLevel);
        return std::make_unique<UnaryNode>(where, op, std::move(operand));
    }

    // Every level of parentheses passes through here, so it keeps little on the stack: no token
    // lives across the recursive call, and the large paths for names and calls stay out of line.
    NodePtr parsePrimary() {
        SourcePosition where = current_.position;
        switch (current_.kind) {
            case TokenKind::Number: {
                double number = current_.number;
                advance();
                return std::make_unique<LiteralNode>(where, makeNumber(number));
            }
            case TokenKind::Text: {
                FMX_Data text = makeText(std::move(current_.text));
                advance();
                return std::make_unique<LiteralNode>(where, std::move(text));
            }
            case TokenKind::Pilcrow:
                advance();
                return std::make_unique<LiteralNode>(where, makeText(u"\r"));
            case TokenKind::LeftParen: {
                advance();
                NodePtr inner = parseExpression();
                if (!current_.is(TokenKind::RightParen))
                    throw syntaxError(current_, "Expected ) to match the ( at " + describe(where));
                advance();
                return inner;
            }
            case TokenKind::LocalVariable:
            case TokenKind::GlobalVariable: return parseVariable();
            case TokenKind::Identifier: return parseName(take());
            default: throw unexpected(current_);
        }
    }

    [[gnu::noinline]] NodePtr parseVariable() {
        Token t = take();
        return std::make_unique<VariableNode>(t.position, std::u16string(t.source), t.is(TokenKind::GlobalVariable));
    }

    std::optional<size_t> letSlotOf(std::u16string_view name) const {
        for (auto it = letNames_.rbegin(); it != letNames_.rend(); ++it)
            if (equalIgnoringCase(it->first, name)) return it->second;
        return std::nullopt;
    }

    // A name standing alone: a field, a call, a Let name or a function that takes no parameters.
    [[gnu::noinline]] NodePtr parseName(const Token& name) {
        if (accept(TokenKind::DoubleColon)) {
            // A field may be called like a keyword ("Orders::Not"); after :: it can only be a name.
            bool isName = current_.is(TokenKind::Identifier) || current_.is(TokenKind::And) ||
                          current_.is(TokenKind::Or) || current_.is(TokenKind::Xor) || current_.is(TokenKind::Not);
            if (!isName) throw syntaxError(current_, "Expected a field name after " + utf8(name.source) + "::");
            Token field = take();
            return std::make_unique<FieldNode>(name.position, utf8(name.source), utf8(field.source));
        }
        if (current_.is(TokenKind::LeftParen)) return parseCall(name);
        if (auto slot = letSlotOf(name.source)) return std::make_unique<LetValueNode>(name.position, *slot);

        bool callable = hasOwnSyntax(name.source);
        if (const BuiltinFunction* builtin = findBuiltin(name.source)) {
            if (builtin->acceptsCount(0)) return std::make_unique<BuiltinCallNode>(name.position, *builtin, NodeList{});
            callable = true;
        } else if (const ExternalFunction* external = FunctionRegistry::instance().find(name.source, 0)) {
            if (external->acceptsCount(0))
                return std::make_unique<ExternalCallNode>(name.position, std::u16string(name.source), NodeList{});
            callable = true;
        }
        if (callable) throw syntaxError(current_, "Expected ( after " + utf8(name.source));
        throw CalcError(CalcError::Kind::UnknownName, name.position, "Unknown name " + utf8(name.source));
    }

    static bool hasOwnSyntax(std::u16string_view name) {
        for (std::u16string_view form : {u"Let", u"If", u"Case", u"Get"})
            if (equalIgnoringCase(name, form)) return true;
        return false;
    }

    [[gnu::noinline]] NodePtr parseCall(const Token& name) {
        std::u16string_view n = name.source;
        if (equalIgnoringCase(n, u"Let")) return parseLet(name);
        if (equalIgnoringCase(n, u"Get")) return parseGet(name);
        if (equalIgnoringCase(n, u"If")) return parseIf(name);
        if (equalIgnoringCase(n, u"Case")) return parseCase(name);
        if (equalIgnoringCase(n, u"Substitute")) return parseSubstitute(name);

        // Built-in names come first: a plug-in cannot replace them.
        if (const BuiltinFunction* builtin = findBuiltin(n)) {
            NodeList args = parseArguments(builtin->name);
            if (!builtin->acceptsCount(args.size()))
                throw countError(name, builtin->name, builtin->minArgs, builtin->maxArgs, args.size());
            return std::make_unique<BuiltinCallNode>(name.position, *builtin, std::move(args));
        }
        const ExternalFunction* external = FunctionRegistry::instance().find(n);
        if (!external) throw CalcError(CalcError::Kind::UnknownName, name.position, "Unknown function " + utf8(n));
        std::u16string registeredName = external->name;
        NodeList args = parseArguments(registeredName);
        checkExternalCount(name, registeredName, args.size());
        return std::make_unique<ExternalCallNode>(name.position, std::u16string(n), std::move(args));
    }

    // A name may be registered several times with different ranges of counts; the call must fit one.
    [[gnu::noinline]] void checkExternalCount(const Token& name, std::u16string_view registeredName, size_t given) const {
        const auto& registry = FunctionRegistry::instance();
        if (const ExternalFunction* f = registry.find(name.source, static_cast<long>(given)); f && f->acceptsCount(given))
            return;
        long min = -1, max = 0;
        std::u16string prototype;
        int registrations = 0;
        for (const ExternalFunction* f : registry.all()) {
            if (!equalIgnoringCase(f->name, name.source)) continue;
            ++registrations;
            prototype = f->prototype;
            min = min < 0 ? f->minArgs : std::min<long>(min, f->minArgs);
            max = (max < 0 || f->maxArgs < 0) ? -1 : std::max<long>(max, f->maxArgs);
        }
        CalcError error = countError(name, registeredName, min, max, given);
        if (registrations == 1 && !prototype.empty())
            error = CalcError(error.kind, name.position, error.message + " (" + utf8(prototype) + ")");
        throw error;
    }

    // ( a ; b ; ... ) after a function's name; display names the function in errors.
    NodeList parseArguments(std::u16string_view display) {
        advance();  // (
        NodeList args;
        if (accept(TokenKind::RightParen)) return args;
        for (;;) {
            args.push_back(parseExpression());
            if (accept(TokenKind::Semicolon)) continue;
            expect(TokenKind::RightParen, "Expected ) to close the call of " + utf8(display));
            return args;
        }
    }

    [[gnu::noinline]] NodePtr parseIf(const Token& name) {
        NodeList args = parseArguments(u"If");
        if (args.size() < 2 || args.size() > 3) throw countError(name, u"If", 2, 3, args.size());
        std::vector<CaseNode::Branch> branches;
        branches.push_back({std::move(args[0]), std::move(args[1])});
        NodePtr otherwise = args.size() == 3 ? std::move(args[2]) : nullptr;
        return std::make_unique<CaseNode>(name.position, std::move(branches), std::move(otherwise));
    }

    [[gnu::noinline]] NodePtr parseCase(const Token& name) {
        NodeList args = parseArguments(u"Case");
        if (args.size() < 2) throw countError(name, u"Case", 2, -1, args.size());
        std::vector<CaseNode::Branch> branches;
        size_t i = 0;
        for (; i + 1 < args.size(); i += 2) branches.push_back({std::move(args[i]), std::move(args[i + 1])});
        NodePtr otherwise = i < args.size() ? std::move(args[i]) : nullptr;
        return std::make_unique<CaseNode>(name.position, std::move(branches), std::move(otherwise));
    }

    // Get ( FilePath ): the attribute is a name, not a calculation.
    [[gnu::noinline]] NodePtr parseGet(const Token& name) {
        advance();  // (
        if (!current_.is(TokenKind::Identifier)) throw syntaxError(current_, "Expected the name of a Get attribute");
        Token attribute = take();
        if (!equalIgnoringCase(attribute.source, u"FilePath"))
            throw CalcError(CalcError::Kind::UnknownName, attribute.position,
                            "Unknown Get attribute " + utf8(attribute.source));
        expect(TokenKind::RightParen, "Expected ) to close the call of Get");
        return std::make_unique<FilePathNode>(name.position);
    }

    // Let ( name = value ; calculation ) or Let ( [ name = value ; ... ] ; calculation ).
    [[gnu::noinline]] NodePtr parseLet(const Token& name) {
        advance();  // (
        size_t outerNames = letNames_.size();
        std::vector<LetNode::Binding> bindings;
        if (current_.is(TokenKind::LeftBracket)) {
            Token open = take();
            do {
                bindings.push_back(parseBinding());
            } while (accept(TokenKind::Semicolon));
            expect(TokenKind::RightBracket, "Expected ] to match the [ at " + describe(open.position));
        } else {
            bindings.push_back(parseBinding());
        }
        expect(TokenKind::Semicolon, "Expected ; before the calculation of Let");
        NodePtr body = parseExpression();
        expect(TokenKind::RightParen, "Expected ) to close the call of Let");
        // The plain names go out of scope with the Let.
        letNames_.erase(letNames_.begin() + static_cast<long>(outerNames), letNames_.end());
        return std::make_unique<LetNode>(name.position, std::move(bindings), std::move(body));
    }

    [[gnu::noinline]] LetNode::Binding parseBinding() {
        bool isTarget = current_.is(TokenKind::Identifier) || current_.is(TokenKind::LocalVariable) ||
                        current_.is(TokenKind::GlobalVariable);
        if (!isTarget) throw syntaxError(current_, "Expected a variable name in Let");
        Token target = take();
        expect(TokenKind::Equal, "Expected = after " + utf8(target.source) + " in Let");
        LetNode::Binding binding{LetNode::Binding::Target::LetName, 0, {}, parseExpression()};
        if (target.is(TokenKind::Identifier)) {
            // Registered only now: the value's own calculation still sees an outer binding of the name.
            binding.slot = slotCount_++;
            letNames_.emplace_back(target.source, binding.slot);
        } else {
            binding.target = target.is(TokenKind::GlobalVariable) ? LetNode::Binding::Target::Global
                                                                  : LetNode::Binding::Target::Local;
            binding.name = std::u16string(target.source);
        }
        return binding;
    }

    // Substitute ( text ; search ; replacement ) or Substitute ( text ; [ s1 ; r1 ] ; [ s2 ; r2 ] ... ).
    // Both forms become the same call, with the pairs flattened after the text.
    [[gnu::noinline]] NodePtr parseSubstitute(const Token& name) {
        const BuiltinFunction* substitute = findBuiltin(u"Substitute");
        advance();  // (
        NodeList args;
        size_t plain = 0, pairs = 0;
        if (!current_.is(TokenKind::RightParen)) {
            for (;;) {
                if (!args.empty() && current_.is(TokenKind::LeftBracket)) {
                    Token open = take();
                    args.push_back(parseExpression());
                    expect(TokenKind::Semicolon, "Expected ; between the search text and its replacement in Substitute");
                    args.push_back(parseExpression());
                    expect(TokenKind::RightBracket, "Expected ] to match the [ at " + describe(open.position));
                    ++pairs;
                } else {
                    args.push_back(parseExpression());
                    ++plain;
                }
                if (!accept(TokenKind::Semicolon)) break;
            }
        }
        expect(TokenKind::RightParen, "Expected ) to close the call of Substitute");
        bool valid = pairs == 0 ? plain == 3 : plain == 1;
        if (!valid) {
            if (pairs == 0) throw countError(name, u"Substitute", 3, 3, plain);
            throw CalcError(CalcError::Kind::Syntax, name.position,
                            "Substitute takes a text and then either a search text and its replacement, or only "
                            "[ search ; replacement ] pairs");
        }
        return std::make_unique<BuiltinCallNode>(name.position, *substitute, std::move(args));
    }

    Lexer lexer_;
    Token current_;
    // The plain names of the Lets being parsed, innermost last; views into the text.
    std::vector<std::pair<std::u16string_view, size_t>> letNames_;
    size_t slotCount_ = 0;
    int nesting_ = 0;
};

}  // namespace

ParsedCalculation parseCalculation(std::u16string_view text, SourcePosition start) {
    return Parser(text, start).parseAll();
}

}  // namespace vdhost::calc
