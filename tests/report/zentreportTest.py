"""Runs zentreport from the outside: zentreportTest.py PROGRAM SCHEMA [PATTERN]; the schema is that of JUnit XML."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

import makeResults

PROGRAM = ""
SCHEMA = ""


class Zentreport(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.pictures = self.folder / "pictures.jsonl"
        makeResults.write(self.pictures, makeResults.pictures())

    def run_on(self, *arguments):
        done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, cwd=self.folder, timeout=60)
        return done.returncode, done.stdout, done.stderr

    def file(self, name, text):
        path = self.folder / name
        path.write_bytes(text if isinstance(text, bytes) else text.encode())
        return path

    def test_summary_counts_and_names_the_worst(self):
        status, out, err = self.run_on(self.pictures)
        self.assertEqual((status, err), (2, ""))  # it holds an error
        self.assertRegex(out, r"22 records: 9 match, 10 mismatch, 1 error, 1 ignored \(unknown method\), 1 skipped, 1 warning.*"
                              r"; worst 1\.59 units at sleeveCluster\(clusterSurface\)\n$")
        self.assertRegex(out, r"\norientConstraint +1 +1 +0 +0  33\.8 degrees at wristTurns\(orientConstraint\)\n")
        self.assertIn("unknown method; the nearest is clamp", out)

    def test_status_tells_match_from_mismatch(self):
        records = list(makeResults.pictures())
        for name, wanted in (("match", 0), ("mismatch", 1), ("error", 2)):
            path = self.folder / name
            makeResults.write(path, [record for record in records if record["outcome"] == name])
            self.assertEqual(self.run_on(path)[0], wanted, name)

    def test_bad_files_are_named_and_the_rest_is_told(self):
        whole = self.pictures.read_text()
        lines = whole.splitlines(keepends=True)
        later = lines[0].replace('"version": 1', '"version": 2')
        self.file("cut", "".join(lines[:4])[:-5])
        self.file("bad", lines[0] + "{oops\n" + "".join(lines[1:]))
        self.file("later", later + "".join(lines[1:]))
        self.file("picture", b"\x89PNG\r\n\x1a\n\0\0")
        status, out, err = self.run_on("cut", "bad", "later", "picture", "missing", self.pictures, "--junit", "all.xml",
                                       "--html", "all.html")
        self.assertEqual(status, 2)
        for text in ("cut: the run was interrupted: 2 of 22 records, and no summary",
                     "bad: 1 malformed line passed over, the first is line 2: ",
                     "later: a results file of version 2; this program reads version 1",
                     "picture: no results file: ", "missing: cannot be opened: No such file or directory"):
            self.assertIn(f"zentreport: {text}", err)
        self.assertIn("46 records: ", out)  # 2, 22 and 22
        suites = xml.etree.ElementTree.parse(self.folder / "all.xml").getroot()
        self.assertEqual([int(suite.get("errors")) for suite in suites], [1, 2, 1, 1, 1, 1])
        self.assertIn("the run was interrupted", (self.folder / "all.html").read_text())

    def test_junit_is_valid_and_says_what_is_off(self):
        nasty = list(makeResults.pictures()) + [
            {"node": "a<&\">\u0001\ufffe", "method": "", "outcome": "error", "seconds": "NaN", "error": "]]>&\n\u0000"}]
        makeResults.write(self.pictures, nasty)
        self.run_on(self.pictures, "--quiet", "--junit", "out.xml")
        subprocess.run(["xmllint", "--noout", "--schema", SCHEMA, self.folder / "out.xml"], check=True, capture_output=True)
        suite = xml.etree.ElementTree.parse(self.folder / "out.xml").getroot()[0]
        counts = [int(suite.get(name)) for name in ("tests", "failures", "errors", "skipped")]
        self.assertEqual(counts, [23, 10, 2, 2])
        self.assertEqual([len(suite.findall(f"testcase/{name}")) for name in ("failure", "error", "skipped")], [10, 2, 2])
        failures = {case.get("classname"): case.find("failure").get("message") for case in suite.findall("testcase[failure]")}
        self.assertEqual(failures["orientConstraint"],
                         "constraintRotate[2] is off by 33.8 degrees; 1 of 1 values over the tolerance 0.001")
        self.assertEqual(failures["multMatrix"], "1 of 1 values not finite")
        self.assertEqual(suite.find("testcase").get("time"), "0.002100")

    def test_a_folder_is_the_results_files_in_it_by_name(self):
        whole = self.pictures.read_text()
        (self.folder / "night" / "inner.jsonl").mkdir(parents=True)  # a folder is no results file, whatever its name
        for name in ("b.jsonl", "a.jsonl", "hero%2Farm.jsonl", ".a.jsonl.part", ".hidden.jsonl", "list.json", "page.html"):
            self.file("night/" + name, whole if name[0] != "." else whole[:100])
        status, out, err = self.run_on("night", "--junit", "all.xml", "--html", "all.html")
        self.assertEqual((status, err), (2, ""))
        self.assertIn("66 records: 27 match, 30 mismatch", out)
        suites = xml.etree.ElementTree.parse(self.folder / "all.xml").getroot()
        self.assertEqual([suite.get("name") for suite in suites],
                         ["night/a.jsonl", "night/b.jsonl", "night/hero%2Farm.jsonl"])
        self.assertEqual(self.run_on("night", self.pictures)[1].count("88 records: "), 1)  # beside other files, too
        (self.folder / "empty").mkdir()
        self.assertEqual(self.run_on("empty"), (2, "", "zentreport: no results files in folder empty\n"))

    def test_page_holds_the_worst_thousand_in_full(self):
        path = self.folder / "many"
        records = ({"node": f"n{i}", "method": "clamp", "outcome": "mismatch", "seconds": 0, "closure": {},
                    "statistics": [makeResults.statistics("o", "Float", "value", [(i * 7919 % 1500 + 1) / 100])]}
                   for i in range(1500))
        makeResults.write(path, records, 1500)
        self.run_on(path, "--quiet", "--html", "page.html")
        page = (self.folder / "page.html").read_text()
        full = {int(number) for number in re.findall(r'id="record(\d+)"', page)}
        self.assertEqual(full, {i for i in range(1500) if i * 7919 % 1500 >= 500})
        self.assertNotRegex(page, r'(src|href)="?(https?:)?//')  # it needs nothing from anywhere

    def test_outputs_that_cannot_be_written_are_told(self):
        for option in ("--junit", "--html"):
            for place in ("/dev/full", "nowhere/file"):
                status, _, err = self.run_on(self.pictures, option, place)
                self.assertEqual(status, 2)
                self.assertIn(f"zentreport: cannot write {place}: ", err)
        for arguments in ((), ("--unknown", self.pictures)):
            status, out, err = self.run_on(*arguments)
            self.assertEqual((status, out), (2, ""))
            self.assertIn("Usage: zentreport [options] RESULTS...", err)


if __name__ == "__main__":
    PROGRAM = str(pathlib.Path(sys.argv.pop(1)).resolve())
    SCHEMA = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main()
