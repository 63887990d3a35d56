"""Tells the cells of a workbook, .xls by xlrd and .xlsx by openpyxl: a line for each, as read_workbook.pl does."""
import re
import sys


def tell(sheet, row, column, shown, bold):
    print("%s %d %d %s%s" % (sheet, row, column, shown, " bold" if bold else ""))


def read_xls(path):
    import xlrd
    book = xlrd.open_workbook(path, formatting_info=True)
    bold = [book.font_list[xf.font_index].weight >= 700 for xf in book.xf_list]
    kinds = {1: lambda v: "text " + v, 2: lambda v: "number %.17g" % v, 4: lambda v: "truth %d" % v,
             3: lambda v: "date " + xlrd.xldate.xldate_as_datetime(v, 0).strftime("%Y-%m-%d %H:%M:%S")}
    for sheet in book.sheets():
        for row in range(sheet.nrows):
            for column, cell in enumerate(sheet.row(row)):
                if cell.ctype in kinds:
                    tell(sheet.name, row, column, kinds[cell.ctype](cell.value), bold[cell.xf_index])


def read_xlsx(path):
    import openpyxl
    kinds = {"s": lambda v: "text " + re.sub("_x([0-9A-F]{4})_", lambda m: chr(int(m[1], 16)), v),
             "inlineStr": lambda v: kinds["s"](v),
             "n": lambda v: "number %.17g" % v, "b": lambda v: "truth %d" % v,
             "d": lambda v: "date " + v.strftime("%Y-%m-%d %H:%M:%S")}
    for sheet in openpyxl.load_workbook(path, read_only=True):
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is not None:
                    tell(sheet.title, cell.row - 1, cell.column - 1, kinds[cell.data_type](cell.value),
                         cell.font.b)


sys.stdout.reconfigure(encoding="utf-8", newline="\n")
(read_xlsx if sys.argv[1].endswith("x") else read_xls)(sys.argv[1])
