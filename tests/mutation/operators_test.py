#!/usr/bin/env python3
"""What is changed in a line, and what is left alone."""

import unittest

import mutants
import operators


def _changed(source, operator=None):
    """[(operator, the source with the change)] of a source, or the sources alone of one operator."""
    made = [(change.operator, source[:change.start] + change.text + source[change.end:])
            for change in operators.changes_of(source)]
    return made if operator is None else [text for name, text in made if name == operator]


def _in_function(statement):
    return f"void F() {{ {statement} }}"


class Operators(unittest.TestCase):
    def test_a_constant_grows_by_one_and_keeps_its_suffix(self):
        self.assertEqual(_changed("int a = 0, b = 41u;", "constant"), ["int a = 1, b = 41u;", "int a = 0, b = 42u;"])

    def test_a_fraction_grows_by_one(self):
        self.assertEqual(_changed("double a = 0.94;", "constant"), ["double a = 1.94;"])

    def test_a_comparison_is_turned_round_or_moved_by_one(self):
        for sign, other in (("==", "!="), ("!=", "=="), ("<", "<="), ("<=", "<"), (">", ">="), (">=", ">")):
            self.assertEqual(_changed(f"a {sign} b", "comparison"), [f"a {other} b"])

    def test_a_comparison_with_nothing_is_a_nil_check(self):
        self.assertEqual(_changed("a == nil"), [("nil-check", "a != nil")])

    def test_angle_brackets_references_and_operator_names_are_no_comparisons(self):
        self.assertEqual(_changed("std::map<A, B> F(A&& a); bool operator == (const A& a);"), [])

    def test_connectives_are_exchanged_and_a_negation_is_dropped(self):
        self.assertEqual(_changed("a && !b || c", "logic"), ["a || !b || c", "a && b || c", "a && !b && c"])

    def test_the_level_of_a_log_line_is_exchanged(self):
        self.assertEqual(_changed(_in_function('VORN_LOG_DEBUG("x");'), "level"),
                         [_in_function('VORN_LOG_ERROR("x");')])

    def test_a_text_changes_in_one_letter_that_no_conversion_needs(self):
        self.assertEqual(_changed(r'"%s \n ok"', "text"), [r'"%s \n pk"'])

    def test_a_text_without_letters_changes_in_its_first_sign_and_an_empty_one_is_filled(self):
        self.assertEqual(_changed('f(@",", "")', "text"), ['f(@"#", "")', 'f(@",", "x")'])

    def test_a_text_of_a_conversion_alone_stays(self):
        self.assertEqual(_changed('"%s"'), [])

    def test_answers_are_turned_round(self):
        self.assertEqual(_changed("f(YES, NO, true, false)", "answer"),
                         ["f(NO, NO, true, false)", "f(YES, YES, true, false)",
                          "f(YES, NO, false, false)", "f(YES, NO, true, true)"])

    def test_a_code_becomes_the_next_of_its_group(self):
        self.assertEqual(_changed("f(RetCode::kSuccess, MethodID::kShareByPipeline)", "code"),
                         ["f(RetCode::kCancelled, MethodID::kShareByPipeline)",
                          "f(RetCode::kSuccess, MethodID::kShare)"])

    def test_a_condition_holds_always_or_never(self):
        source = _in_function("if (a) { b(); }")

        self.assertEqual(_changed(source, "branch-always"), [source.replace("(a)", "(static_cast<bool>(a) || true)")])
        self.assertEqual(_changed(source, "branch-never"), [source.replace("(a)", "(static_cast<bool>(a) && false)")])

    def test_a_choice_is_always_or_never_taken(self):
        self.assertEqual(_changed("a ? b : c"),
                         [("branch-always", "a || true ? b : c"), ("branch-never", "a && false ? b : c")])

    def test_statements_that_are_no_declarations_never_run(self):
        for statement in ("[a b:c];", "f(a);", "A<B>::F(a);", "a->b = c;", "a[i] = b;", "a += b;", "throw a;"):
            self.assertEqual(_changed(_in_function(statement), "statement"),
                             [_in_function(f"if (false) {{ {statement} }}")], statement)

    def test_declarations_are_kept(self):
        for statement in ("A b(c);", "A* const b = c;", "const A<B> b = c;", "A b;", "using A = B;",
                          "void (^const a)(B) = c;"):
            self.assertEqual(_changed(_in_function(statement), "statement"), [], statement)

    def test_a_statement_holds_the_blocks_inside_it(self):
        source = _in_function("f(^{ [a b]; });")

        self.assertEqual(_changed(source, "statement"),
                         [_in_function("if (false) { f(^{ [a b]; }); }"),
                          _in_function("f(^{ if (false) { [a b]; } });")])

    def test_what_a_function_gives_at_its_end_is_kept(self):
        self.assertEqual(_changed("int F() { if (a) { return b; } return c; }", "statement"),
                         ["int F() { if (a) { if (false) { return b; } } return c; }"])

    def test_a_return_after_which_nothing_comes_is_kept(self):
        self.assertEqual(_changed("void F() { if (a) { return; } }", "statement"), [])
        self.assertEqual(_changed("void F() { switch (a) { case A: return; default: return; } }", "statement"), [])
        self.assertEqual(_changed(_in_function("b = ^{ if (a) { return; } };"), "statement"),
                         [_in_function("if (false) { b = ^{ if (a) { return; } }; }")])

    def test_a_return_from_a_loop_or_before_more_is_changed(self):
        self.assertEqual(len(_changed("void F() { for (A a : b) { return; } }", "statement")), 1)
        self.assertEqual(len(_changed("void F() { if (a) { return; } [b c]; }", "statement")), 2)

    def test_a_case_runs_into_the_next_one(self):
        self.assertEqual(_changed(_in_function("switch (a) { case A: f(); break; default: return; }"), "fall-through"),
                         [_in_function("switch (a) { case A: f(); [[fallthrough]]; default: return; }")])

    def test_a_case_in_braces_runs_into_the_next_one(self):
        source = _in_function("switch (a) { case A: { f(); return; } default: break; }")

        self.assertEqual(_changed(source, "fall-through"), [source.replace("return", "[[fallthrough]]")])

    def test_members_of_types_are_no_statements(self):
        self.assertEqual(_changed("struct A { A(); explicit A(int b); };"), [])

    def test_what_a_macro_stands_for_is_changed_too(self):
        self.assertEqual(_changed("#define F(a) \\\n    {  \\\n        f(a == b);  \\\n    }\n", "comparison"),
                         ["#define F(a) \\\n    {  \\\n        f(a != b);  \\\n    }\n"])

    def test_comments_includes_conditions_and_assertions_are_left_alone(self):
        for source in ("// a == 1\n", '/* "b" */', '#include "c.h"\n', "#if D == 1\n#endif\n",
                       'static_assert(sizeof(E) == 8, "f");'):
            self.assertEqual(_changed(source), [], source)

    def test_a_language_of_linkage_is_no_text(self):
        self.assertEqual(_changed('extern "C" {}'), [])


class Mutants(unittest.TestCase):
    def test_are_named_by_file_line_and_operator_with_a_number_where_that_is_not_enough(self):
        made = mutants.mutants_of("Folder/A.mm", "\nf(1, 2);\n")

        self.assertEqual([mutant.name for mutant in made], ["A.mm:2:constant", "A.mm:2:constant:2"])

    def test_keep_their_key_when_lines_are_added_above(self):
        before = mutants.mutants_of("A.mm", "f(1);\n")
        after = mutants.mutants_of("A.mm", "\n// More.\nf(1);\n")

        self.assertEqual([mutant.key() for mutant in before], [mutant.key() for mutant in after])

    def test_of_equal_lines_are_told_apart_by_their_occurrence(self):
        made = mutants.mutants_of("A.mm", "f(1);\nf(1);\n")

        self.assertEqual([mutant.occurrence for mutant in made], [1, 2])

    def test_are_drawn_alike_with_the_same_seed_and_stay_in_order(self):
        every = mutants.mutants_of("A.mm", "f(1);\n" * 100)

        drawn = mutants.sample(every, 10, 7)

        self.assertEqual(drawn, mutants.sample(every, 10, 7))
        self.assertEqual((len(drawn), drawn), (10, [mutant for mutant in every if mutant in drawn]))

    def test_are_drawn_alike_when_another_is_gone(self):
        every = mutants.mutants_of("A.mm", "f(1);\n" * 100)
        drawn = mutants.sample(every, 10, 7)
        other = next(mutant for mutant in every if mutant not in drawn)

        self.assertEqual(mutants.sample([mutant for mutant in every if mutant != other], 10, 7), drawn)

    def test_are_all_drawn_without_a_limit(self):
        every = mutants.mutants_of("A.mm", "f(1, 2, 3);\n")

        self.assertEqual(mutants.sample(every, 0, 1), every)


if __name__ == "__main__":
    unittest.main()
