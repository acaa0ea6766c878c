"""Prints all cells of a workbook, a line each: sheet, row, column, kind, value. Reads it with xlrd."""

import sys

import xlrd

KINDS = {xlrd.XL_CELL_TEXT: "text", xlrd.XL_CELL_NUMBER: "number"}

book = xlrd.open_workbook(sys.argv[1])
for sheet in book.sheets():
    for row in range(sheet.nrows):
        for column in range(sheet.ncols):
            cell = sheet.cell(row, column)
            kind = KINDS.get(cell.ctype, str(cell.ctype))
            value = "%.15g" % cell.value if kind == "number" else cell.value
            print(sheet.name, row, column, kind, value, sep="\t")
