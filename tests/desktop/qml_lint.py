"""Runs qmllint over every QML file of the window and fails on any warning.

usage: qml_lint.py QMLLINT QT_QML_FOLDER SOURCE_FOLDER BUILD_FOLDER, the last two those of the window's sources.
"""

import json
import pathlib
import re
import subprocess
import sys

ID = re.compile(r"^\s*(?:\w+ \{ )?id: (\w+)", re.MULTILINE)

# What qmllint 6.4 holds against QML that is right.
MISTAKEN = re.compile("|".join([
    'of type QSizeF to QSize$',                    # a value type that converts
    'of type QStringList to QList<QString>$',      # so does this
    'not found on type "Q(String)?List(<QString>)?"$',  # a list of strings has the methods of an array
    'of type QObject to QQuickItem$',              # an item that its type's file declares further down
    'Property "callLater" is a QJSValue property',
]))


def is_outer_id(source, warning):
    """Qt 6.4 has no bound components: each id from around a delegate or an inner component is "unqualified" to it."""
    start = warning["charOffset"]
    name = source[start:start + warning["length"]]
    return warning["message"] == "Unqualified access" and name in ID.findall(source)


def warnings_of(qmllint, imports, module, built):
    files = sorted(str(file) for file in module.glob("*.qml"))
    options = ["--bare", "--deferred-property-id", "disable", *(option for folder in imports for option in ("-I", folder))]
    for resource in sorted(built.glob(".rcc/*.qrc")):
        options += ["--resource", str(resource)]
    report = subprocess.run([qmllint, "--json", "-", *options, *files], capture_output=True, text=True)
    for file in json.loads(report.stdout)["files"]:
        source = pathlib.Path(file["filename"]).read_text(encoding="utf-8")
        for warning in file["warnings"]:
            if warning["type"] == "info" or is_outer_id(source, warning) or MISTAKEN.search(warning["message"]):
                continue
            yield f'{file["filename"]}:{warning.get("line", 0)}: {warning["message"]}'


def main():
    qmllint, qt_qml, source, build = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3]), pathlib.Path(sys.argv[4])
    imports = [str(build / "../../qml"), qt_qml]
    modules = sorted({file.parent for file in source.glob("*/*.qml")})
    found = [line for module in modules for line in warnings_of(qmllint, imports, module, build / module.name)]
    print(f"{len(modules)} modules looked at")
    print("\n".join(found))
    return 1 if found or not modules else 0


sys.exit(main())
