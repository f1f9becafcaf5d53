#include "expression.h"

#include "interruption.h"
#include "parser.h"

namespace vdhost::calc {

namespace {

// A plug-in function may evaluate a calculation that calls a plug-in function that evaluates...;
// without a limit a function that evaluates itself would exhaust the stack.
constexpr int kMaxNestedEvaluations = 16;
thread_local int nestedEvaluations = 0;

class EvaluationDepth {
public:
    explicit EvaluationDepth(SourcePosition where) {
        if (nestedEvaluations >= kMaxNestedEvaluations)
            throw CalcError(CalcError::Kind::Evaluation, where,
                            "Calculations are nested too deeply (more than " +
                                std::to_string(kMaxNestedEvaluations) +
                                " calculations evaluating each other through plug-in functions)");
        ++nestedEvaluations;
    }
    ~EvaluationDepth() { --nestedEvaluations; }
    EvaluationDepth(const EvaluationDepth&) = delete;
    EvaluationDepth& operator=(const EvaluationDepth&) = delete;
};

}  // namespace

Expression::Expression(std::unique_ptr<Node> root, size_t letSlots) : root_(std::move(root)), letSlots_(letSlots) {}

Expression::~Expression() = default;

std::unique_ptr<Expression> Expression::parse(std::u16string_view text, int startLine, int startColumn) {
    ParsedCalculation parsed = parseCalculation(text, SourcePosition{startLine, startColumn});
    return std::unique_ptr<Expression>(new Expression(std::move(parsed.root), parsed.letSlots));
}

FMX_Data Expression::evaluate(Context& context, Variables& locals) const {
    EvaluationDepth depth(root_->position);
    throwIfInterrupted();
    Evaluation evaluation{context, locals, {}};
    evaluation.letValues.resize(letSlots_);
    return root_->evaluate(evaluation);
}

FMX_Data evaluate(std::u16string_view text, Context& context, Variables& locals) {
    return Expression::parse(text)->evaluate(context, locals);
}

}  // namespace vdhost::calc
