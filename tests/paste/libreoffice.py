"""Pastes what is on the clipboard into new documents of LibreOffice, saves them and says what arrived.

Usage: libreoffice.py PIPE FOLDER, while LibreOffice runs with --accept="pipe,name=PIPE;urp;".
A line for each application; the exit status is 1 when one of them did not get what it should. LibreOffice ends with it.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import time
import zipfile

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException
from com.sun.star.lang import DisposedException

START_PATIENCE = 120  # seconds
PASTE_PATIENCE = 20
VECTOR_PICTURE = re.compile(r"^Pictures/.*\.(pdf|svg|emf|wmf|eps|svm)$")
BITMAP_PICTURE = re.compile(r"^Pictures/.*\.(png|tiff?|jpe?g|bmp)$")
# A word of the graph that the text of a vector picture has.
WORD = "Time (s)"

# Name, kind of document, service, ending, filter that writes PDF, and whether a vector picture arrives.
APPLICATIONS = [
    ("Writer", "swriter", "com.sun.star.text.TextDocument", "odt", "writer_pdf_Export", True),
    ("Draw", "sdraw", "com.sun.star.drawing.DrawingDocument", "odg", "draw_pdf_Export", True),
    ("Impress", "simpress", "com.sun.star.presentation.PresentationDocument", "odp", "impress_pdf_Export", True),
    ("Calc", "scalc", "com.sun.star.sheet.SpreadsheetDocument", "ods", "calc_pdf_Export", False),
]


def property_value(name, value):
    result = PropertyValue()
    result.Name = name
    result.Value = value
    return result


def connect(pipe):
    """The component context of the running LibreOffice, as soon as there is one."""
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    end = time.monotonic() + START_PATIENCE
    while True:
        try:
            return resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
        except NoConnectException:
            if time.monotonic() > end:
                raise
            time.sleep(0.2)


def create(context, name):
    return context.ServiceManager.createInstanceWithContext(name, context)


def change_setting(context, path, name, value):
    provider = create(context, "com.sun.star.configuration.ConfigurationProvider")
    place = property_value("nodepath", path)
    settings = provider.createInstanceWithArguments("com.sun.star.configuration.ConfigurationUpdateAccess", (place,))
    setattr(settings, name, value)
    settings.commitChanges()


def prepare(context, modules):
    """Settings for windows without a window manager and without anybody who answers dialogs."""
    for service in modules:
        # Not maximized: such a window has no size without a window manager, and what is pasted comes to the middle of what the window shows.
        change_setting(context, f"/org.openoffice.Setup/Office/Factories/{service}", "ooSetupFactoryWindowAttributes", "0,0,1500,1100;1;0,0,0,0;")
    if "com.sun.star.presentation.PresentationDocument" in modules:
        # Otherwise a dialog asks for a template.
        change_setting(context, "/org.openoffice.Office.Impress/Misc/NewDoc", "AutoPilot", False)


def shapes(document):
    """What is drawn on the first page."""
    page = document.DrawPage if hasattr(document, "DrawPage") else document.DrawPages.getByIndex(0)
    return [page.getByIndex(index) for index in range(page.Count)]


def paste(context, document):
    """The shape that came with pasting; None when none came."""
    before = len(shapes(document))
    dispatcher = create(context, "com.sun.star.frame.DispatchHelper")
    end = time.monotonic() + PASTE_PATIENCE
    # A command is refused while the window is still being made.
    while time.monotonic() < end:
        dispatcher.executeDispatch(document.CurrentController.Frame, ".uno:Paste", "", 0, ())
        next_try = time.monotonic() + 5
        while time.monotonic() < next_try:
            there = shapes(document)
            if len(there) > before:
                return there[-1]
            time.sleep(0.1)
    return None


def export(document, path, filter_name):
    document.storeToURL(path.as_uri(), (property_value("FilterName", filter_name),))


def look(path):
    """The display as it is now, where the program for that is installed."""
    if shutil.which("import"):
        subprocess.run(["import", "-window", "root", str(path)], check=False)


def text_of(pdf):
    if not shutil.which("pdftotext"):
        return None
    return subprocess.run(["pdftotext", "-raw", str(pdf), "-"], capture_output=True, text=True, check=True).stdout


def examine(path, pdf, wants_vector):
    """What the saved document holds, and what is wrong with it; an empty text for nothing."""
    with zipfile.ZipFile(path) as archive:
        pictures = [(each.filename, each.file_size) for each in archive.infolist()]
    vectors = [each for each in pictures if VECTOR_PICTURE.match(each[0])]
    bitmaps = [each for each in pictures if BITMAP_PICTURE.match(each[0])]
    found = vectors or bitmaps
    if not found:
        return "no picture", "the document holds no picture"
    name, size = found[0]
    what = f"{name.rsplit('.', 1)[1].upper()}, {size} bytes"
    if wants_vector and not vectors:
        return what, "a bitmap arrived instead of a vector picture"
    text = text_of(pdf)
    if wants_vector and text is not None and WORD not in text:
        return what, f'the picture has no text "{WORD}"'
    return what, ""


def try_application(context, folder, application):
    """True when the application got what it should."""
    name, kind, _, ending, pdf_filter, wants_vector = application
    desktop = create(context, "com.sun.star.frame.Desktop")
    document = desktop.loadComponentFromURL(f"private:factory/{kind}", "_blank", 0, ())
    try:
        shape = paste(context, document)
        look(folder / f"{name}-window.png")
        if shape is None:
            print(f"{name}: FAILED: nothing was pasted", flush=True)
            return False
        size = f"{shape.Size.Width / 100:.1f} by {shape.Size.Height / 100:.1f} mm"
        path, pdf = folder / f"{name}.{ending}", folder / f"{name}.pdf"
        document.storeToURL(path.as_uri(), ())
        export(document, pdf, pdf_filter)
    finally:
        document.close(True)
    what, problem = examine(path, pdf, wants_vector)
    print(f"{name}: FAILED: {problem} ({what})" if problem else f"{name}: pasted {what}, {size}", flush=True)
    return not problem


def main(pipe, folder):
    context = connect(pipe)
    modules = create(context, "com.sun.star.frame.ModuleManager").ElementNames
    prepare(context, [application[2] for application in APPLICATIONS if application[2] in modules])
    good = True
    for application in APPLICATIONS:
        if application[2] in modules:
            good = try_application(context, folder, application) and good
        else:
            print(f"{application[0]}: skipped, it is not installed", flush=True)
    try:
        create(context, "com.sun.star.frame.Desktop").terminate()
    except DisposedException:
        pass
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], pathlib.Path(sys.argv[2]).resolve()))
