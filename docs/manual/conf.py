# SPDX-License-Identifier: Apache-2.0
"""How the manual is built. The version comes from the build, by -D release=."""

from docutils import nodes
from docutils.parsers.rst import Directive, directives
from sphinx.builders.html import StandaloneHTMLBuilder

project = "VYR Dashboard"
author = "VYR Technologies"
language = "en"
exclude_patterns = ["theme"]
highlight_language = "none"
nitpicky = True
smartquotes = False  # dashes and quotes stand as they are to be read; options keep their two hyphens

# A theme of one page template and one stylesheet: the pages are read from the disk and need no script.
html_theme = "theme"
html_theme_path = ["."]
html_title = "VYR Dashboard – Manual"
html_copy_source = False
html_permalinks = False
html_use_index = False


class Screenshot(Directive):
    """A picture of the program: pictures/NAME-light.png and NAME-dark.png, of which the one is seen that suits the
    reader's skin, with a caption if there is one.

    .. screenshot:: NAME
       :alt: what is to be seen
       :small:

       The caption.
    """

    required_arguments = 1
    has_content = True
    option_spec = {"alt": directives.unchanged_required, "small": directives.flag}

    def run(self):
        classes = ["screenshot"] + (["small"] if "small" in self.options else [])
        figure = nodes.figure("", classes=classes)
        for skin in ("light", "dark"):
            uri = f"pictures/{self.arguments[0]}-{skin}.png"
            figure += nodes.image(uri=uri, alt=self.options["alt"], classes=[skin])
        if self.content:
            text, messages = self.state.inline_text(" ".join(self.content), self.lineno)
            figure += nodes.caption("", "", *text)
            return [figure] + messages
        return [figure]


def setup(app):
    app.add_directive("screenshot", Screenshot)
    StandaloneHTMLBuilder.search = False  # a page that would do nothing without scripts
