#!/usr/bin/python3
"""A Qt window with one focused field: qt_fields.py PyQt5|PyQt6 line|text|picture|password TEXT"""
import importlib
import sys

version, kind, text = sys.argv[1:]
widgets = importlib.import_module(version + ".QtWidgets")
application = widgets.QApplication(sys.argv)
if kind == "text":
    field = widgets.QPlainTextEdit(text)
elif kind == "picture":
    field = widgets.QTextEdit()
    field.setPlainText(text)
    cursor = field.textCursor()
    cursor.movePosition(cursor.MoveOperation.End)
    cursor.insertHtml('<img src="none.png">')
else:
    field = widgets.QLineEdit(text)
    if kind == "password":
        field.setEchoMode(widgets.QLineEdit.EchoMode.Password)
window = widgets.QMainWindow()
window.setWindowTitle("Fields")
window.setCentralWidget(field)
window.show()
field.setFocus()
sys.exit(application.exec())
