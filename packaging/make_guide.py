#!/usr/bin/python3
"""Converts the user's guide to a single self-contained page, for a browser without a network.

make_guide.py MARKDOWN PAGE
"""

import base64
import pathlib
import re
import sys

import markdown
from markdown.extensions.toc import slugify_unicode

PAGE = """<!DOCTYPE html>
<html lang="zh-CN">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<style>
:root {{ color-scheme: light dark; }}
body {{ max-width: 46em; margin: 2em auto; padding: 0 1em; line-height: 1.7; font-family: sans-serif; }}
img {{ display: block; max-width: 100%; height: auto; margin: 1em auto; border: 1px solid #8886; }}
table {{ border-collapse: collapse; }}
th, td {{ border: 1px solid #8888; padding: .3em .7em; text-align: left; }}
code {{ background: #8882; padding: .1em .3em; border-radius: 3px; }}
</style>
</head>
<body>
{body}
</body>
</html>
"""


def with_pictures(body, folder):
    """Embeds every picture in the page."""
    def embedded(match):
        picture = base64.b64encode((folder / match[1]).read_bytes()).decode()
        return f'src="data:image/png;base64,{picture}"'
    return re.sub(r'src="([^":]+\.png)"', embedded, body)


def main(source, target):
    text = source.read_text(encoding="utf-8")
    body = markdown.markdown(text, extensions=["tables", "toc"],
                             extension_configs={"toc": {"slugify": slugify_unicode}})
    # Every link to a section must have a target.
    for section in re.findall(r'href="#([^"]+)"', body):
        if f'id="{section}"' not in body:
            sys.exit(f"{source}: no section {section}")
    title = re.search(r"^# (.+)$", text, re.MULTILINE)[1]
    target.write_text(PAGE.format(title=title, body=with_pictures(body, source.parent)),
                      encoding="utf-8")


main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
