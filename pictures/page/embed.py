"""Puts the parts of the page together, and makes them a source of the library.

usage: embed.py page.html style.css SCRIPT... OUTPUT.cpp

The policy of the page allows the one script and the one style that are in it, by their digests, and nothing else.
"""

import base64
import hashlib
import sys
from pathlib import Path


def digest(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def literal(text):
    """Lines of at most 2000 bytes; escapes of three octal digits cannot run into what follows."""
    def byte(value):
        return chr(value) if 32 <= value < 127 and value not in b'"\\?' else f"\\{value:03o}"
    data = text.encode()
    pieces = ["".join(map(byte, data[at:at + 2000])) for at in range(0, len(data), 2000)]
    return "\n".join(f'    "{piece}"' for piece in pieces)


def function(name, text):
    return f"std::string_view {name}()\n{{\n    return std::string_view(\n{literal(text)},\n    {len(text.encode())});\n}}\n"


def script(paths):
    library, own = [], []
    for path in paths:
        text = path.read_text()
        (library if "three" in str(path) else own).append(f"// {path.name}\n{text}")
    return "\n".join([*library, '(() => {\n"use strict";\n', *own, "})();\n"])


def main():
    html, style, *scripts, output = map(Path, sys.argv[1:])
    style_text, script_text = style.read_text(), script(scripts)
    for text, end in ((style_text, "</style"), (script_text, "</script"), (script_text, "<!--")):
        if end in text:
            sys.exit(f"embed.py: {end} would end the element that it is in")
    policy = (f"default-src 'none'; script-src {digest(script_text)}; style-src {digest(style_text)}; "
              "base-uri 'none'; form-action 'none'")
    page = html.read_text().replace("@POLICY@", policy).replace("@STYLE@", style_text)
    before, behind = page.replace("@SCRIPT@", script_text).split("@DATA@")
    output.write_text('#include "pictures/play_page.h"\n\nnamespace orvane::pictures\n{\n\n'
                      + function("pageBeforeData", before) + "\n" + function("pageBehindData", behind)
                      + "\n}  // namespace orvane::pictures\n")


main()
