#!/usr/bin/env python3
"""Checks that the relative links in Markdown pages lead to a file: links.py PAGE..."""
import os
import re
import sys


def targets(page):
    """The relative links of a page, those in code left out."""
    try:
        with open(page, encoding="utf-8") as file:
            text = re.sub(r"```.*?```|`[^`\n]*`", "", file.read(), flags=re.DOTALL)
    except OSError as error:
        sys.exit(f"links.py: {error}")
    return [link for link in re.findall(r"\]\(([^)\s]+)\)", text) if not re.match(r"\w+:|#", link)]


if __name__ == "__main__":
    broken = [f"{page}: no such file: {link}" for page in sys.argv[1:] for link in targets(page)
              if not os.path.exists(os.path.join(os.path.dirname(page), link.split("#")[0]))]
    if broken or len(sys.argv) < 2:
        sys.exit("\n".join(broken) or __doc__)
