"""Which declarations a comment documents, and what becomes of it: headers_test.py"""
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "docs/tools"))
import doxygen_filter
import headers
import man_pages

HEADER = r"""// Thing: what the header is about.
//
//     a shape
#ifndef THING_H
#define THING_H
class KORBASE_API Thing {
public:
    Thing() : size(0) {}  // nothing, yet
    // As long as `n`.
    explicit Thing(unsigned n);
    Thing(Thing const& other);
    // Trims it.
    void Trim();
    void TrimLeft() {
        // not for readers
        if (size) Trim();
    }
    int Len() const;
    // Applies to what follows.

    // Finds <it>.
    bool Find(char c = '\'', char d = ';');
};
extern "C" {
// Compares. Kept: `b` first.
KORBASE_API int thing_cmp(char const* a, char const* b);
KORBASE_API unsigned thing_len(char const* a);

int not_exported(void);

KORBASE_API int bare(void (*f)(int), int n);
}
#endif
"""

with tempfile.TemporaryDirectory() as folder:
    (pathlib.Path(folder) / "thing.h").write_text(HEADER, encoding="utf-8")
    header = headers.read(folder, "thing.h")
    filtered = "\n".join(doxygen_filter.filtered(folder, "thing.h"))
found = [(" ".join(group.comment), [headers.function_name(d.text) for d in group.declarations])
         for group in headers.groups(header)]
assert found == [("As long as `n`.", ["Thing"]), ("Trims it.", ["Trim", "TrimLeft"]),
                 ("Applies to what follows.  Finds <it>.", ["Find"]),
                 ("Compares. Kept: `b` first.", ["thing_cmp", "thing_len"])], found
assert man_pages.plain_functions(header) == ["thing_cmp", "thing_len", "bare"]
for text, times in {"@file thing.h": 1, "@verbatim\n     a shape\n @endverbatim": 2, "what the header is about": 2,
                    "/**< nothing, yet */": 1, "\\<it\\>": 1, "<b>Kept:</b> `b` first": 2, "Trims it.": 2,
                    "not for readers": 1, "/** not": 0}.items():
    assert filtered.count(text) == times, f"{filtered.count(text)} times {text!r} in\n{filtered}"
_, page = man_pages.page(header, headers.groups(header)[-1], {"thing_cmp", "thing_len", "bare"})
assert ".BR bare (3)" in page and "\\fIb\\fP first" in page and ".B #include <thing.h>" in page, page
