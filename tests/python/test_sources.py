"""Tables in workbooks, databases and packed text: the same as from csv, bit by bit; damaged ones are one line."""

import csv
import ctypes
import datetime
import gzip
import io
import json
import os
import pathlib
import random
import re
import sqlite3
import subprocess
import warnings
import zipfile
from xml.sax.saxutils import escape, quoteattr

import openpyxl
import pytest
import quillara

from conftest import PROGRAM, SURVEY

DAY = datetime.date
ROWS = [  # numbers of 15 digits, as more don't come through the ODBC driver of SQLite
    ["name", "x", "count", "day", "text"],
    ["Anna, B", 0.7, 1, DAY(2024, 2, 29), "two\nlines"],
    ["é \"q\"", 1e300, None, DAY(1900, 3, 1), None],
    [None, None, None, None, None],
    ["NA", -5e-324, 12345678901, DAY(9999, 12, 31), "a;b|c\td"],
    ["Zoë", 0.333333333333333, 0, DAY(1970, 1, 1), " <&> "],
]


def run(*arguments, stdin=None):
    return subprocess.run([PROGRAM, *map(str, arguments)], input=stdin, capture_output=True, timeout=60)


def table_of(source, folder, stdin=None):
    """All that a source gives: kinds and labels, and values to the last bit."""
    out = folder / "out.qtable"
    done = run("convert", source, out, stdin=stdin)
    assert (done.returncode, done.stderr.decode()) == (0, "")
    variables = json.loads(run("info", out, "--format", "json").stdout)
    return variables["variables"], run("convert", out, "-").stdout


def as_csv():
    text = io.StringIO()
    csv.writer(text, lineterminator="\n").writerows(["" if cell is None else cell for cell in row] for row in ROWS)
    return text.getvalue().encode()


def as_xlsx(path, begins_1904=False, sheet="Data"):
    book = openpyxl.Workbook()
    if begins_1904:
        book.epoch = openpyxl.utils.datetime.CALENDAR_MAC_1904
    book.active.title = sheet
    for row in ROWS:
        book.active.append(row)
    book.active["A20"].fill = openpyxl.styles.PatternFill("solid", "ff0000")
    book.active.column_dimensions["H"].width = 40
    book.save(path)


def ods_cell(value):
    if value is None:
        return "<table:table-cell/>"
    if isinstance(value, DAY):
        return f'<table:table-cell office:value-type="date" office:date-value="{value}"/>'
    if isinstance(value, str):
        lines = "".join(f"<text:p>{escape(line)}</text:p>" for line in value.split("\n")).replace("\t", "<text:tab/>")
        note = "<office:annotation><text:p>a note</text:p></office:annotation>"
        return f'<table:table-cell office:value-type="string">{note}{lines}</table:table-cell>'
    return f'<table:table-cell office:value-type="float" office:value="{value!r}"><text:p>0.3</text:p></table:table-cell>'


def as_ods(path, rows=None):
    names = ("office", "table", "text")
    spaces = " ".join(f'xmlns:{name}="urn:oasis:names:tc:opendocument:xmlns:{name}:1.0"' for name in names)
    empty = '<table:table-row table:number-rows-repeated="1048570"><table:table-cell table:number-columns-repeated="16384"/></table:table-row>'
    body = rows or "".join(f"<table:table-row>{''.join(map(ods_cell, row))}</table:table-row>" for row in ROWS)
    content = (f'<office:document-content {spaces}><office:body><office:spreadsheet><table:table table:name="One">{body}{empty}'
               "</table:table></office:spreadsheet></office:body></office:document-content>")
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("mimetype", "application/vnd.oasis.opendocument.spreadsheet", zipfile.ZIP_STORED)
        archive.writestr("content.xml", content)


def as_sqlite(path):
    with sqlite3.connect(path) as base:
        base.execute("create table people (name text, x real, count integer, day text, text text)")
        base.executemany("insert into people values (?, ?, ?, ?, ?)",
                         [[str(cell) if isinstance(cell, DAY) else cell for cell in row] for row in ROWS[1:]])
    base.close()


def zstd(content):
    return subprocess.run(["zstd", "-q", "-c"], input=content, capture_output=True, check=True).stdout


@pytest.fixture
def sources(tmp_path):
    """A file of each kind."""
    text = as_csv()
    (tmp_path / "t.csv").write_bytes(text)
    (tmp_path / "t.csv.gz").write_bytes(gzip.compress(text[:40]) + gzip.compress(text[40:]))
    (tmp_path / "t.tsv.zst").write_bytes(zstd(text[:40]) + zstd(text[40:]))
    as_xlsx(tmp_path / "t.xlsx")
    as_xlsx(tmp_path / "mac.xlsx", begins_1904=True)
    as_ods(tmp_path / "t.ods")
    as_sqlite(tmp_path / "t.db")
    return tmp_path


def test_every_source_gives_the_same_table(sources):
    wanted = table_of(sources / "t.csv", sources)
    database = f"sqlite:{sources / 't.db'}"
    for source in ("t.csv.gz", "t.tsv.zst", "t.xlsx", "mac.xlsx", "t.ods", "t.db"):
        assert table_of(sources / source, sources) == wanted, source
        (sources / "nameless").write_bytes((sources / source).read_bytes())
        assert table_of(sources / "nameless", sources) == wanted, source
    odbc = f"odbc:Driver=SQLite3;Database={sources / 't.db'}"
    for source in (f"{database}?table=people", f"{database}?query=SELECT * FROM people;", odbc, f"{odbc}?table=people",
                   f"{odbc}?query=SELECT * FROM people"):
        assert table_of(source, sources) == wanted, source
    for piped in ("t.csv", "t.csv.gz", "t.tsv.zst"):
        assert table_of("-", sources, stdin=(sources / piped).read_bytes()) == wanted, piped
    run("convert", sources / "t.csv", sources / "own.xlsx")
    assert table_of(sources / "own.xlsx", sources) == wanted
    written = run("convert", sources / "t.xlsx", "-").stdout
    assert table_of("-", sources, stdin=written) == wanted


def test_sheets_are_chosen_and_cells_have_their_kinds(tmp_path):
    path = tmp_path / "sheets.xlsx"
    book = openpyxl.Workbook()
    book.active.title = "First, hidden"
    book.active.sheet_state = "hidden"
    sheet = book.create_sheet("Cells")
    moment = datetime.datetime(2024, 1, 5, 12, 30, 1)
    for row in ([], ["ok", "at", "clock", "error", "merged", None, "sum", "percent"],
                [True, moment, datetime.time(7, 5), "#N/A", "m", None, 3, 0.25],
                [False, moment.replace(hour=0, minute=0, second=0), datetime.time(23), 1.5, "n", None, None, None]):
        sheet.append(row)
    sheet.merge_cells("E3:F3")
    sheet["H3"].number_format = '0%'
    sheet["G3"].number_format = '#,##0.00 "days";[Red]-0'
    book.create_sheet("2").append(["only"])
    book.save(path)
    done = run("convert", path, "-")
    assert done.stdout.decode() == ("ok,at,clock,error,merged,Var6,sum,percent\n"
                                    "TRUE,2024-01-05T12:30:01,07:05:00,,m,,3,0.25\nFALSE,2024-01-05T00:00:00,23:00:00,1.5,n,,,\n")
    assert done.stderr.decode() == ('"sheets.xlsx" has 3 sheets, of which "Cells" is read. --sheet (sheet in Python) takes another '
                                    'of "First, hidden", "Cells", "2".\n')
    with pytest.warns(quillara.Remark, match="further|3 sheets") as heard:
        quillara.open(path)
    assert [remark.message.code for remark in heard] == ["further-sheets"]
    for sheet in ("2", "3"):
        assert run("convert", path, "-", "--sheet", sheet).stdout == b"only\n"
    assert run("convert", path, "-", "--sheet", "Cells", "--no-header").stdout.startswith(b"Var1,")
    report = openpyxl.Workbook()
    for row in ([], ["Report of 2024"], [], [None, "men", "men"], ["x", 1, 2], ["y", 3, 4]):
        report.active.append(row)
    report.active.merge_cells("A2:C2")
    report.save(tmp_path / "report.xlsx")
    with pytest.warns(quillara.Remark, match=r"line 4: --skip 3 \(skip=3"):
        quillara.open(tmp_path / "report.xlsx")
    for skip in (2, 3):
        with pytest.warns(quillara.Remark, match="men_2"):
            assert list(quillara.open(tmp_path / "report.xlsx", skip=skip).to_pandas()["men_2"]) == [2, 4]
    for sheet, text in (("4", 'has no sheet "4"; it has'), ("First, hidden", 'is empty.')):
        done = run("info", path, "--sheet", sheet)
        assert done.returncode == 1 and text in done.stderr.decode()
    repeated = (f'<table:table-row table:number-rows-repeated="2">{ods_cell("a")}'
                '<table:table-cell table:number-columns-repeated="2" office:value-type="boolean" office:boolean-value="true"/>'
                "</table:table-row>")
    as_ods(tmp_path / "r.ods", repeated)
    assert run("convert", tmp_path / "r.ods", "-").stdout == b"a,TRUE,TRUE_2\na,TRUE,TRUE\n"


def test_workbooks_are_written(tmp_path):
    """What a workbook can't tell is told as of csv; every result is a sheet that the list in front leads to."""
    survey = pathlib.Path(SURVEY)
    copy = tmp_path / "survey.xlsx"
    assert run("convert", survey, copy).returncode == 0
    assert run("convert", copy, "-").stdout == survey.with_suffix(".csv").read_bytes()
    sheet = openpyxl.load_workbook(copy).active
    assert (sheet.title, sheet.freeze_panes, sheet.max_row) == ("Data", "A2", 2001)
    odd = tmp_path / "odd.csv"
    odd.write_text('d,t,e,x\n1899-12-31,"_x000D_ <&>""",,0.30000000000000004\n2024-02-29,007 a,,-0\n,,,\n')
    assert run("convert", odd, copy, "--quiet").stderr == b""
    assert run("convert", copy, "-").stdout == odd.read_bytes()
    results = tmp_path / "r.xlsx"
    done = run("drill", survey, "--down", "sex=Female", "--show", "frequencies,descriptives,histograms", "--after", "each",
               "--output", results)
    assert done.returncode == 0, done.stderr
    book = openpyxl.load_workbook(results)
    listed = [row[0] for row in book["Contents"].iter_rows() if row[0].hyperlink]
    assert [cell.value for cell in listed] == book.sheetnames[1:]
    assert all(cell.hyperlink.location == f"'{cell.value}'!A1" for cell in listed)
    sheet = book["frequencies region"]
    assert [cell.value for cell in sheet[sheet.max_row]] == ["Southern Islands", 94, 1077, 94 / 1077 * 100, 100]
    assert sheet.freeze_panes == "A6" and sheet["D6"].number_format == "0.00"
    with zipfile.ZipFile(results) as archive:
        for i, name in enumerate(book.sheetnames, 1):
            drawing = f"xl/drawings/drawing{i}.xml"
            assert name.startswith("histograms") == (drawing in archive.namelist())
            if name.startswith("histograms"):
                relations = [archive.read(part).decode() for part in (f"xl/worksheets/_rels/sheet{i}.xml.rels",
                                                                       f"xl/drawings/_rels/drawing{i}.xml.rels")]
                assert f"../drawings/drawing{i}.xml" in relations[0]
                image = re.search(r"\.\./(media/image\d+\.png)", relations[1]).group(1)
                assert archive.read("xl/" + image).startswith(b"\x89PNG")
                assert f'cx="{900 * 9525}" cy="{600 * 9525}"' in archive.read(drawing).decode()


def test_convert_takes_some_cases_and_labels(tmp_path):
    (tmp_path / "t.csv").write_text("sex,n,name\n1,5,b\n2,7,a\n1,,c\n,9,a\n")
    (tmp_path / "labels.csv").write_text("variable,value,label\nsex,1,Male\nsex,2,Female\nname,a,Anna\n")
    options = ("--dictionary", tmp_path / "labels.csv", "--select", 'n > 5 or sex = "Female"')
    assert run("convert", tmp_path / "t.csv", "-", *options).stdout == b"sex,n,name\nFemale,7,Anna\n"
    run("convert", tmp_path / "t.csv", tmp_path / "t.sav", *options[:2], "--select", "n > 5 and missing(sex) or n = 7")
    described = json.loads(run("info", tmp_path / "t.sav", "--format", "json").stdout)
    assert described["data"]["cases"] == 2 and described["variables"][2]["type"] == "text"


def test_databases_are_read_only_and_say_what_they_hold(tmp_path):
    path = tmp_path / "two.db"
    with sqlite3.connect(path) as base:
        base.executescript('create table b ("odd ""name" integer); insert into b values (7); create view a as select 1 as one;'
                           "create table c (bytes blob); insert into c values (x'00ff')")
    base.close()
    before = path.read_bytes()
    assert run("convert", f"sqlite:{path}?table=b", "-").stdout == b'"odd ""name"\n7\n'
    for source, status, text in (
            (path, 1, f'"{path}" holds the tables "a", "b", "c"; choose one as "sqlite:{path}?table=a".'),
            (f"sqlite:{path}?query=DELETE FROM b", 1, "is only read: the query must be one SELECT."),
            (f"sqlite:{path}?query=SELECT 1; DELETE FROM b", 1, "is only read: the query must be one SELECT."),
            (f"sqlite:{path}?query=SELECT absent", 1, "no such column: absent."),
            (f"sqlite:{path}?table=none", 1, 'no such table: none. It holds "a", "b", "c".'),
            (f"sqlite:{path}?table=c", 1, 'the column "bytes" holds bytes; name the others in a query.'),
            (f"sqlite:{path}?tables=b", 2, 'table=NAME or query=SQL, not "tables=b".'),
            (f"sqlite:{tmp_path / 'no.db'}", 1, "No such file or directory."),
            ("odbc:none such", 1, "Data source name not found and no default driver specified."),
            (f"odbc:Driver=SQLite3;Database={path};PWD=secret", 1, '"odbc" holds the tables "a", "b", "c"; choose one as "odbc:...?table=a".'),
            (f"odbc:Driver=SQLite3;Database={path};PWD=secret?query=DELETE FROM b", 1, 'the query must be one SELECT.'),
            ("sqlite:", 2, "names no database.")):
        done = run("info", source)
        assert done.returncode == status and done.stderr.decode().splitlines()[0].endswith(text), done.stderr
        assert done.stderr.count(b"\n") == status  # wrong usage names --help in a second one
    assert path.read_bytes() == before and not (tmp_path / "no.db").exists()


def test_damaged_sources_are_one_line(sources):
    """Cut at any place, and filled with bytes of chance: an error in one line, or, of a database, which has no checksums, a table."""
    chance = random.Random(11)
    for name in ("t.csv.gz", "t.tsv.zst", "t.xlsx", "t.ods", "t.db"):
        sound = (sources / name).read_bytes()
        places = sorted(chance.sample(range(len(sound)), 15))
        damaged = [sound[:place] for place in places] + [bytes(chance.randbytes(len(sound)))]
        for place in places:
            damaged.append(sound[:place] + chance.randbytes(8) + sound[place + 8:])
        for number, content in enumerate(damaged):
            (sources / name).write_bytes(content)
            done = run("info", sources / name, "--quiet")
            where = (name, number, done.stderr)
            assert done.returncode in (0, 1), where
            assert done.stderr.count(b"\n") == done.returncode, where
            if number < len(places) and name != "t.db":
                assert done.returncode == 1, where


def test_bombs_end_at_the_memory_limit(tmp_path):
    (tmp_path / "b.csv.gz").write_bytes(gzip.compress(b"a,b\n" + b"1,2\n" * 60_000_000, 9))
    lines = [f'<row r="{row}"><c r="XFD{row}"><v>1</v></c></row>' for row in range(1, 40_001)]
    kind = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
    with zipfile.ZipFile(tmp_path / "b.xlsx", "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("xl/workbook.xml", f'<workbook xmlns:r="{kind}"><sheets><sheet name="s" r:id="a"/></sheets></workbook>')
        archive.writestr("xl/_rels/workbook.xml.rels", f'<R><Relationship Id="a" Type={quoteattr(kind + "/worksheet")} Target="s.xml"/></R>')
        archive.writestr("xl/s.xml", f"<worksheet><sheetData>{''.join(lines)}</sheetData></worksheet>")
    as_ods(tmp_path / "b.ods", '<table:table-row table:number-rows-repeated="1000000"><table:table-cell '
                               'table:number-columns-repeated="1000" office:value-type="float" office:value="1"/></table:table-row>')
    entities = "".join(f'<!ENTITY e{i} "{f"&e{i - 1};" * 10}">' for i in range(1, 10))
    with zipfile.ZipFile(tmp_path / "e.xlsx", "w") as archive:
        archive.writestr("xl/workbook.xml", f'<!DOCTYPE w [<!ENTITY e0 "lol">{entities}]><w>&e9;</w>')
    for name, text in (("b.csv.gz", "--max-memory"), ("b.xlsx", "--max-memory"), ("b.ods", "--max-memory"), ("e.xlsx", "damaged")):
        done = run("info", tmp_path / name, "--max-memory", "150M")
        assert done.returncode == 1 and text in done.stderr.decode() and done.stderr.count(b"\n") == 1, (name, done.stderr)


def test_remarks_on_a_file_are_warnings_and_stand_in_the_results(tmp_path):
    path = tmp_path / "odd.csv"
    path.write_text('region,rate,rate,n\nN,10%,"1,234",1\nS,5.5%,"2,345",2\nTotal,,"3,579",3\n')
    with pytest.warns(quillara.Remark) as heard:
        table = quillara.open(path)
    codes = ["names-repeated", "texts-as-numbers", "texts-as-numbers", "totals-row"]
    assert [remark.message.code for remark in heard] == codes and heard[0].filename == __file__
    assert [variable.kind for variable in table.variables] == ["text", "number", "number", "number"]
    assert run("convert", path, "-").stdout.startswith(b"region,rate,rate_2,n\nN,0.1,1234,1\nS,0.055,2345,2\n")
    with warnings.catch_warnings(record=True) as heard:
        warnings.simplefilter("always")
        kept = quillara.open(path, keep_texts=True)
        drill = table.drill(categorical=["region"])
    assert [remark.message.code for remark in heard] == [codes[0], codes[3]]
    assert [variable.kind for variable in kept.variables] == ["text", "text", "text", "number"]
    drill.close()
    script = tmp_path / "drill.py"
    direct = run("drill", path, "--categorical", "region", "--keep-texts", "--record", script, "--format", "json")
    assert [remark["code"] for remark in json.loads(direct.stdout)["remarks"]] == [codes[0], codes[3]]
    assert run("run", "--format", "json", script).stdout == direct.stdout


def test_a_foreign_export_is_read_as_told(tmp_path):
    path = tmp_path / "export.csv"
    path.write_text("zip;n;day;q\n01234;1.234;3/4/2024;1\n20095;850;5/6/2024;99\n80331;2.500;7/8/2024;2\n")
    told = {"decimal": ",", "dates": "day-first", "numbers": ["zip"], "missing_values": {"q": ["97..99"]}}
    with pytest.warns(quillara.Remark, match="texts of"):
        table = quillara.open(path, **told)
    assert [variable.kind for variable in table.variables] == ["number", "number", "date", "number"]
    frame = table.to_pandas()
    assert list(frame["n"]) == [1234, 850, 2500] and str(frame["day"][0])[:10] == "2024-04-03" and frame["q"].isna().sum() == 1
    with pytest.raises(ValueError, match="day-first"):
        quillara.open(path, dates="first")
    with pytest.raises(TypeError, match="missing_values"):
        quillara.open(path, missing_values=["q"])
    script = tmp_path / "drill.py"
    direct = run("drill", path, "--categorical", "zip,q", "--decimal", ",", "--dates", "day-first", "--texts", "n",
                 "--missing", "q=97..99", "--record", script, "--format", "json")
    assert run("run", "--format", "json", script).stdout == direct.stdout


def test_standard_output_takes_data_of_any_format(tmp_path):
    saved = tmp_path / "saved.sav"
    done = run("drill", SURVEY, "--categorical", "sex", "--down", "sex=Female", "--save", "-", "--save-format", "sav")
    saved.write_bytes(done.stdout)
    assert ' to the standard output.' in done.stderr.decode()
    assert run("drill", SURVEY, "--categorical", "sex", "--down", "sex=Female", "--save", "-").stdout == \
        run("convert", saved, "-").stdout
    written = run("convert", SURVEY, "-", "--format", "xlsx").stdout
    assert len(list(openpyxl.load_workbook(io.BytesIO(written)).active.rows)) == 2001


def test_a_part_that_unpacks_without_end_is_refused(tmp_path):
    path = tmp_path / "bomb.xlsx"
    done = run("convert", SURVEY, path)
    sound = zipfile.ZipFile(path)
    parts = {name: sound.read(name) for name in sound.namelist()}
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as bomb:
        for name, content in parts.items():
            filler = b" " * (300 << 20) if name.endswith("sheet1.xml") else b""
            bomb.writestr(name, content.replace(b"<sheetData>", b"<sheetData>" + filler))
    done = run("info", path)
    assert (done.returncode, done.stdout) == (1, b"") and done.stderr.decode() == (
        f'quillara: "{path}" can\'t be read: a part of it unpacks to more than 200 times its size, as that of no workbook does.\n')


def duckdb_library():
    """The library, where the system or QUILLARA_DUCKDB offers it."""
    try:
        return ctypes.CDLL(os.environ.get("QUILLARA_DUCKDB") or "libduckdb.so")
    except OSError:
        return None


def make_parquet(library, path, query):
    database, connection = ctypes.c_void_p(), ctypes.c_void_p()
    assert library.duckdb_open(None, ctypes.byref(database)) == 0
    assert library.duckdb_connect(database, ctypes.byref(connection)) == 0
    copy = f"COPY ({query}) TO '{path}' (FORMAT parquet)".encode()
    assert library.duckdb_query(connection, copy, None) == 0
    library.duckdb_disconnect(ctypes.byref(connection))
    library.duckdb_close(ctypes.byref(database))


def test_parquet_without_the_library_says_what_to_install(tmp_path, monkeypatch):
    path = tmp_path / "t.parquet"
    path.write_bytes(b"PAR1 PAR1")
    for place, which in (("", "isn't installed"), ("/nowhere/l.so", "isn't there as /nowhere/l.so, which QUILLARA_DUCKDB names")):
        monkeypatch.setenv("QUILLARA_DUCKDB", place)
        if not place and duckdb_library():
            continue
        for name in (path, f"parquet:{path}"):
            done = run("info", name)
            assert (done.returncode, done.stdout, done.stderr.decode()) == (1, b"", (
                f'quillara: "{path}" is a Parquet file, which is read by the library of DuckDB (libduckdb.so), which {which}; '
                "get it from duckdb.org and put it where the system finds libraries, or name its file in QUILLARA_DUCKDB.\n"))
    path.write_bytes(b"a,b")
    assert run("info", f"parquet:{path}").stderr.decode() == f'quillara: "{path}" is no Parquet file.\n'


@pytest.mark.skipif(not duckdb_library(), reason="the library of DuckDB isn't there; QUILLARA_DUCKDB may name it")
def test_parquet_is_the_same_table_as_csv(tmp_path):
    path = tmp_path / "it's [1].parquet"
    make_parquet(duckdb_library(), str(path).replace("'", "''"), """
        SELECT i AS "Id, 1", i / 3.0::DOUBLE AS third, CASE WHEN i <> 1 THEN 'é, "' || i END AS text, i = 1 AS even,
            DATE '2024-01-31' + i::INTEGER AS day, TIMESTAMP '2024-01-01' + INTERVAL (i * 12) HOUR AS moment,
            TIMESTAMPTZ '2024-01-01 10:30:00+02' AS zone, TIME '10:30:00' AS clock, (i / 4)::DECIMAL(9,2) AS money, [i, 1] AS list,
            'x'::BLOB AS raw, (i * 1.1)::FLOAT AS f, CASE WHEN i = 1 THEN 'nan'::DOUBLE ELSE i END AS n FROM range(3) t(i)""")
    done = run("convert", path, "-")
    assert done.stderr.decode().splitlines() == [
        'Columns of "it\'s [1].parquet" that hold bytes are left out: "raw".',
        'The times of "zone" are moments whatever the time zone and are shown in UTC; the file doesn\'t say where they were taken.',
        'Variable "clock" of "/dev/stdout": when it is read, its times of day become texts (write sav).']
    assert done.stdout.decode() == (
        '"Id, 1",third,text,even,day,moment,zone,clock,money,list,f,n\n'
        '0,0,"é, ""0",FALSE,2024-01-31,2024-01-01T00:00:00,2024-01-01T08:30:00,10:30:00,0,"[0, 1]",0,0\n'
        '1,0.3333333333333333,,TRUE,2024-02-01,2024-01-01T12:00:00,2024-01-01T08:30:00,10:30:00,0.25,"[1, 1]",1.1,\n'
        '2,0.6666666666666666,"é, ""2",FALSE,2024-02-02,2024-01-02T00:00:00,2024-01-01T08:30:00,10:30:00,0.5,"[2, 1]",2.2,2\n')
    for query, text in (("SELECT 'inf'::DOUBLE AS x", "infinite number"), ("SELECT 'x'::BLOB AS x", "nothing but bytes")):
        make_parquet(duckdb_library(), tmp_path / "odd.parquet", query)
        done = run("info", tmp_path / "odd.parquet")
        assert done.returncode == 1 and text in done.stderr.decode()
    sound = path.read_bytes()
    for place in range(0, len(sound), 97):
        path.write_bytes(sound[:place])
        done = run("info", path, "--quiet")
        assert (done.returncode, done.stdout, done.stderr.count(b"\n")) == (1, b"", 1), (place, done)


@pytest.mark.skipif(not duckdb_library(), reason="the library of DuckDB isn't there; QUILLARA_DUCKDB may name it")
def test_moments_of_parquet_keep_their_values(tmp_path):
    """Every unit, before 1970 too; what a moment of ours can't tell stays a text, the whole column."""
    path = tmp_path / "moments.parquet"
    make_parquet(duckdb_library(), path, """
        SELECT make_timestamp(CAST((i - 500) * 12345678901234 AS BIGINT)) AS us, DATE '1969-12-31' - i::INTEGER AS day,
            CASE WHEN i % 7 > 0 THEN TIMESTAMP_MS '1969-12-31 23:59:59.125' END AS ms, TIMESTAMP_S '2024-02-29 12:00:00' AS s,
            TIMESTAMP_NS '1969-12-31 23:59:59.123456789' AS ns, TIME '23:59:59' AS clock, TIME '10:00:00.5' AS part,
            CASE WHEN i = 999 THEN 'infinity'::DATE ELSE DATE '2024-01-01' END AS endless,
            CASE WHEN i = 999 THEN TIMESTAMP '12024-01-01 00:00:00' ELSE TIMESTAMP '2024-01-01 10:00:00' END AS far,
            NULL::TIMESTAMP AS none, TIMESTAMP '0017-10-25 10:00:00.123456' AS old FROM range(1000) t(i)""")
    with pytest.warns(quillara.Remark, match="more decimals") as heard:
        table = quillara.open(path)
    assert [remark.message.code for remark in heard] == ["moments-rounded", "moments-rounded"]
    kinds = {variable.name: variable.kind for variable in table.variables}
    assert list(kinds.values()) == ["datetime", "date", "datetime", "datetime", "datetime", "time", "text", "text", "text", "datetime", "datetime"]
    rows = list(csv.DictReader(io.StringIO(run("convert", path, "-", "--quiet").stdout.decode())))
    begin = datetime.datetime(1970, 1, 1)
    for i, row in enumerate(rows):
        moment = begin + datetime.timedelta(microseconds=(i - 500) * 12345678901234)
        assert datetime.datetime.fromisoformat(row["us"].ljust(26, "0") if "." in row["us"] else row["us"]) == moment, (i, row)
        assert row["day"] == (begin - datetime.timedelta(days=i + 1)).date().isoformat()
        assert row["ms"] == ("1969-12-31T23:59:59.125" if i % 7 else "")
    assert (rows[999]["endless"], rows[999]["far"], rows[0]["far"]) == ("infinity", "12024-01-01", "2024-01-01T10:00:00")
    assert rows[0]["ns"].startswith("1969-12-31T23:59:59.123456") and rows[0]["part"] == "10:00:00.5"
    assert run("info", path, "--texts", "day", "--quiet").stdout.count(b" text ") == 4
