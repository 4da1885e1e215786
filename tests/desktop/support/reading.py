"""Reads what stands on the screen, by a recogniser that isn't the program's."""

import io
import os
import re
import subprocess

from PIL import Image

from support import owned


def text_of(desktop, image):
    """The words of an image as one line."""
    picture = Image.fromarray(image).convert("L")
    picture = picture.resize((picture.width * 3, picture.height * 3), Image.LANCZOS)
    data = io.BytesIO()
    picture.save(data, "PNG")
    answer = subprocess.run([owned.require("tesseract"), "-", "-", "--psm", "6"], input=data.getvalue(),
                            env=dict(os.environ, OMP_THREAD_LIMIT="1"), capture_output=True, check=True)
    return re.sub(r"\s+", " ", answer.stdout.decode())
