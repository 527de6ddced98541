"""Tests of the filters between our sources and the manual."""
import os
import pathlib
import re
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "docs" / "manual"))
from dead_links import dead_links  # noqa: E402
from house_comments import HouseComments, group_of  # noqa: E402
from page_links import filtered as filtered_page  # noqa: E402


def in_class(body, group=""):
    """What becomes of the members of a class, each line by itself."""
    text = "/// A class.\nclass X {\npublic:\n" + body + "};\n"
    return HouseComments(text, group).filtered().removeprefix("/// A class.\nclass X {\npublic:\n").removesuffix("};\n")


class RepeatedComments(unittest.TestCase):
    def check(self, body, expected):
        self.assertEqual(in_class(body), expected)

    def test_setter_has_the_words_of_the_getter_above_it(self):
        self.check("/// The gap.\ndouble gap() const { return m_gap; }\nvoid setGap(double gap);\n",
                   "/// The gap.\ndouble gap() const { return m_gap; }\n/*! @brief The gap. */ void setGap(double gap);\n")

    def test_a_blank_line_ends_it(self):
        self.check("/// The gap.\ndouble gap();\n\nvoid other();\n", "/// The gap.\ndouble gap();\n\nvoid other();\n")

    def test_another_comment_ends_it(self):
        self.check("/// The gap.\ndouble gap();\n// Plain.\nvoid other();\n", "/// The gap.\ndouble gap();\n// Plain.\nvoid other();\n")
        self.check("/// The gap.\ndouble gap();\n/// Other.\nvoid other();\nvoid third();\n", "/// The gap.\ndouble gap();\n/// Other.\nvoid other();\n/*! @brief Other. */ void third();\n")

    def test_an_access_specifier_ends_it(self):
        self.check("/// The gap.\ndouble gap();\nprotected:\nvoid other();\n", "/// The gap.\ndouble gap();\nprotected:\nvoid other();\n")

    def test_lines_are_joined_and_paragraphs_and_lists_kept(self):
        self.check("/// One\n/// sentence.\n///\n/// - a\n/// - b\nint f();\nint g();\n",
                   "/// One\n/// sentence.\n///\n/// - a\n/// - b\nint f();\n/** One sentence.<br><br> <ul><li>a</li><li>b</li></ul> */ int g();\n")

    def test_ownership_alone_is_no_short_form(self):
        self.check("/// Weak. The graph,\n/// or null.\nint graph();\nvoid setGraph(int);\n",
                   "/// Weak.\\ The graph,\n/// or null.\nint graph();\n/** Weak.\\ The graph, or null. */ void setGraph(int);\n")

    def test_bodies_initial_values_and_declarations_over_several_lines_are_passed_over(self):
        self.check('/// A.\nint f(int a = g({1, 2}),\n    int b) {\n    if (a) { return \'}\'; }\n\n    return "{";\n}\nint b{2};\nint c = [] { return 1; }();\n',
                   '/// A.\nint f(int a = g({1, 2}),\n    int b) {\n    if (a) { return \'}\'; }\n\n    return "{";\n}\n/*! @brief A. */ int b{2};\n/*! @brief A. */ int c = [] { return 1; }();\n')

    def test_constructors_with_initialisers_are_one_declaration(self):
        self.check("/// A.\nexplicit X(int a) : m_a(a), m_b{a} {}\nint f();\n", "/// A.\nexplicit X(int a) : m_a(a), m_b{a} {}\n/*! @brief A. */ int f();\n")

    def test_templates_and_attributes_belong_to_the_declaration(self):
        self.check("/// A.\nint f();\ntemplate <class T>\n[[nodiscard]] T g(T t);\n", "/// A.\nint f();\n/*! @brief A. */ template <class T>\n[[nodiscard]] T g(T t);\n")

    def test_overrides_keep_the_words_of_their_base(self):
        self.check("/// A.\nint f();\nint g() const override { return 1; }\nint h();\n", "/// A.\nint f();\nint g() const override { return 1; }\n/*! @brief A. */ int h();\n")

    def test_enumerators_with_comments_of_their_own_are_left_alone(self):
        text = "/// Kinds.\nenum class Kind : int { A, ///< a\n    B ///< b\n};\n"
        self.check(text, text)

    def test_a_nested_class_has_comments_of_its_own(self):
        self.check("/// A.\nstruct Y {\n    int a;\n    /// B.\n    int b;\n    int c;\n};\nint d;\n", "/// A.\nstruct Y {\n    int a;\n    /// B.\n    int b;\n    /*! @brief B. */ int c;\n};\nint d;\n")

    def test_a_forward_declaration_is_left_alone(self):
        self.check("/// A.\nint f();\nclass Z;\n", "/// A.\nint f();\nclass Z;\n")


class StandardSentences(unittest.TestCase):
    def test_special_members(self):
        for declaration, expected in [
            ("X(const X&) = delete;", "/** Not copied. */ X(const X&) = delete;"),
            ("X(const X& other) = default;", "/** A copy of every member. */ X(const X& other) = default;"),
            ("X& operator=(const X&) = delete;", "/** Not assigned. */ X& operator=(const X&) = delete;"),
            ("X(X&&) noexcept;", "/** Takes what the other has. */ X(X&&) noexcept;"),
            ("X& operator=(X&& other) noexcept;", "/** Takes what the other has. */ X& operator=(X&& other) noexcept;"),
            ("bool operator==(const X&) const = default;", "/** Whether all members are equal. */ bool operator==(const X&) const = default;"),
            ("friend bool operator==(const X& a, const X& b);", "/** Whether both are equal. */ friend bool operator==(const X& a, const X& b);"),
            ("virtual ~X() = default;", "/** @cond */ virtual ~X() = default; /** @endcond */"),
            ("using Y::Y;", "/** The constructors of the base. */ using Y::Y;"),
            ("friend class Y;", "/** @cond */ friend class Y; /** @endcond */"),
            ("X(const Y&);", "X(const Y&);"),
        ]:
            with self.subTest(declaration):
                self.assertEqual(in_class(declaration + "\n"), expected + "\n")

    def test_words_of_its_own_come_first(self):
        for declaration in ["X(const X&) = delete;", "~X();"]:
            self.assertEqual(in_class("/// A.\n" + declaration + "\n"), "/// A.\n" + declaration + "\n")

    def test_the_sentence_comes_before_the_comment_of_a_neighbour(self):
        self.assertEqual(in_class("/// A.\nX();\nX(const X&) = delete;\n"), "/// A.\nX();\n/** Not copied. */ X(const X&) = delete;\n")


class Sections(unittest.TestCase):
    def test_a_plain_comment_by_itself_begins_a_section_and_keeps_the_number_of_lines(self):
        self.assertEqual(in_class("    // Layout. In\n    // points.\n\n    int a;\n    // Drawing.\n\n    int b;\nprotected:\n    int c;\n"),
                         "    /** @name Layout\nIn points. */ /** @{ */\n\n    int a;\n    /** @} */ /** @name Drawing\n */ /** @{ */\n    int b;\n/** @} */ protected:\n    int c;\n")

    def test_the_end_of_the_class_ends_it(self):
        text = "struct X {\n    // A.\n\n    int a;\n};\n"
        self.assertEqual(HouseComments(text, "").filtered(), "struct X {\n    /** @name A\n */ /** @{ */\n    int a;\n/** @} */ };\n")

    def test_a_plain_comment_above_a_declaration_begins_none(self):
        text = "struct X {\n    // A.\n    int a;\n};\n// B.\n\nint b;\n"
        self.assertEqual(HouseComments(text, "").filtered(), text)


class PrivateParts(unittest.TestCase):
    def test_they_are_taken_out_and_their_lines_kept(self):
        self.assertEqual(HouseComments("/// A.\nclass A {\n    struct Key {\n        int k;\n    };\n\npublic:\n    /// B.\n    int b;\nprivate:\n    /// C.\n    int c;\n    int d;\n};\n", "").filtered(),
                         "/// A.\nclass A {\n\n\n\n\npublic:\n    /// B.\n    int b;\nprivate:\n\n\n\n};\n")

    def test_a_structure_is_public_and_so_is_what_follows(self):
        text = "/// A.\nstruct A {\n    /// B.\n    int b;\n};\n\n/// C.\nint c;\n"
        self.assertEqual(HouseComments(text, "").filtered(), text)

    def test_signals_and_protected_parts_stay(self):
        text = "/// A.\nclass A {\n    Q_OBJECT\n\npublic:\n    /// B.\n    A();\n\nsignals:\n    /// C.\n    void c();\n\nprotected:\n    /// D.\n    int d;\n};\n"
        self.assertEqual(HouseComments(text, "").filtered(), text.replace("    Q_OBJECT", ""))


class Groups(unittest.TestCase):
    def test_what_stands_in_a_namespace_is_in_the_group(self):
        text = "namespace N {\n\n/// A.\nstruct A {\n    /// B.\n    int b;\n};\n\n/// F.\nvoid f();\nvoid g();\n\n} // namespace N\n"
        self.assertEqual(HouseComments(text, "G").filtered(),
                         "namespace N {\n\n/// A. @ingroup G\nstruct A {\n    /// B.\n    int b;\n};\n\n/// F. @ingroup G\nvoid f();\n/*! @brief F. @ingroup G */ void g();\n\n} // namespace N\n")

    def test_the_group_is_named_by_the_folder(self):
        self.assertEqual(group_of("TOLVGraphing/platform/text/Font.h"), "TOLVGraphing_platform_text")
        self.assertEqual(group_of("TOLVMath/TOLVRealVector.h"), "TOLVMath")

    def test_every_folder_of_public_headers_has_its_group(self):
        private = set((PROJECT / "cmake" / "private-headers.txt").read_text().splitlines())
        groups = set(re.findall(r"@defgroup (\w+)", (PROJECT / "docs" / "manual" / "groups.dox").read_text()))
        headers = [str(header.relative_to(PROJECT)) for folder in ("TOLVMath", "TOLVGraphing", "desktop", "opengl", "hosts") for header in (PROJECT / folder).rglob("*.h")]
        folders = {group_of(header) for header in headers if header not in private and "/testing/" not in header}
        self.assertGreater(len(folders), 20)
        self.assertEqual(folders - groups, set())

    def test_export_macros_are_taken_out(self):
        self.assertEqual(HouseComments("#define TOLV_EXPORT x\n/// A.\nclass TOLV_EXPORT A {\n};\n/// F.\n[[nodiscard]] TOLV_DESKTOP_EXPORT int f();\n", "").filtered(),
                         "#define TOLV_EXPORT x\n/// A.\nclass A {\n};\n/// F.\n[[nodiscard]] int f();\n")


class PageLinks(unittest.TestCase):
    def setUp(self):
        os.chdir(PROJECT)

    def test_links(self):
        for text, page, expected in [
            ("[x](../../examples/x.cpp)", "docs/gallery/README.md", "[x](x.cpp)"),
            ("[s](x.svg)", "docs/gallery/README.md", "[s](x.svg)"),
            ("[examples/](../../examples)", "docs/gallery/README.md", "examples/"),
            ("[P](../PERFORMANCE.md)", "docs/manual/a.md", "[P](../PERFORMANCE.md)"),
            ("[R](../README.md)", "docs/SECURITY.md", "R"),
            ("[w](https://example.org/a#b)", "docs/SECURITY.md", "[w](https://example.org/a#b)"),
            ("![](x.png)", "docs/gallery/README.md", "![](x.png)"),
            ("[`TOLVGraph`](../TOLVGraphing/graph/TOLVGraph.h)s", "docs/SECURITY.md", '@ref TOLVGraphing::TOLVGraph "TOLVGraph"s'),
            ("[Cairo](../desktop/cairo/CairoContext.h)", "docs/SECURITY.md", '@ref TOLVGraphing::cairo::CairoContext "Cairo"'),
            ("[`seriesColor()`](../TOLVGraphing/data/SeriesColors.h)", "docs/SECURITY.md", '@ref TOLVGraphing::seriesColor "seriesColor()"'),
            ("[`input::readMeasurements`](../desktop/input/MeasurementReader.h)", "docs/SECURITY.md", '@ref TOLVGraphing::input::readMeasurements "input::readMeasurements"'),
            ("[colours](../TOLVGraphing/data/ColorOperations.h)", "docs/SECURITY.md", "colours"),
            ("[nothing](../TOLVGraphing/data/Nothing.h)", "docs/SECURITY.md", "nothing"),
        ]:
            with self.subTest(text):
                self.assertEqual(filtered_page(text, page), expected)

    def test_headings_have_the_labels_that_links_name(self):
        self.assertEqual(filtered_page("# Page\n## One, `two` three\n[t](#one-two-three)", "docs/manual/a-b.md"),
                         '# Page\n## One, `two` three {#docs_manual_a_b_one_two_three}\n@ref docs_manual_a_b_one_two_three "t"')
        self.assertEqual(filtered_page("[t](manual/a-b.md#one-two-three)", "docs/SECURITY.md"), '@ref docs_manual_a_b_one_two_three "t"')

    def test_code_is_left_alone(self):
        self.assertEqual(filtered_page("`[x](y.cpp)` [z](y.cpp)", "docs/SECURITY.md"), "`[x](y.cpp)` z")
        block = "a\n```sh\n## b\nrun([](int) {});\n```\n"
        self.assertEqual(filtered_page(block, "docs/SECURITY.md"), block)


class DeadLinks(unittest.TestCase):
    def test_what_leads_nowhere_is_named(self):
        with tempfile.TemporaryDirectory() as folder:
            pages = pathlib.Path(folder)
            (pages / "index.html").write_text('<a href="b.html#here">1</a><a href="b.html#there">2</a><img src="c.png"><a href="#nowhere">3</a><a href="https://example.org/#x">4</a>')
            (pages / "b.html").write_text('<p id="here"></p><a href="index.html">1</a>')
            self.assertEqual(list(dead_links(pages)), ["index.html: #nowhere", "index.html: b.html#there", "index.html: c.png"])


if __name__ == "__main__":
    unittest.main()
