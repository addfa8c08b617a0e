"""What the host computes itself agrees with pandas and SciPy on real data."""

import json
import os
import pathlib
import subprocess

import numpy
import pandas
import pytest
from conftest import PROGRAM, SURVEY
from scipy import stats

import quillara

DATA = pathlib.Path(os.environ.get("QUILLARA_TEST_DATA", "/nowhere"))
pytestmark = pytest.mark.skipif(not DATA.is_dir(), reason="QUILLARA_TEST_DATA names no folder")

LISTS = {
    "penguins.csv": ["--categorical", "species,island,sex", "--continuous",
                     "bill_length_mm,bill_depth_mm,flipper_length_mm,body_mass_g"],
    "adult.sav": ["--categorical", "sex,education,workclass", "--continuous", "age,hours_per_week,capital_gain"],
}
close = pytest.approx


def documents(file, *options):
    command = [PROGRAM, "drill", str(DATA / file), *LISTS[file], *options, "--format", "json"]
    done = subprocess.run(command, capture_output=True, text=True)
    remarks = [line for line in done.stderr.splitlines() if not line.startswith("The file declares the weight")]
    assert done.returncode == 0 and not remarks, done.stderr
    return [frame_of(document) for document in json.loads(done.stdout)["documents"]]


def frame_of(document):
    columns = [" ".join(name.split()).removesuffix(" by weights") for name in document["columns"]]
    rows = [row["name"] for row in document["rows"]]
    return pandas.DataFrame([row["cells"] for row in document["rows"]], index=rows, columns=columns)


def cases(file):
    return quillara.open(str(DATA / file)).to_pandas()


def weighted_quantile(values, weights, share):
    """Over the sample in which each value stands as often as its weight says, between places of (W - 1) p."""
    order = numpy.argsort(values, kind="stable")
    values, reached = values[order], numpy.cumsum(weights[order])
    place = share * (reached[-1] - 1)
    low, high = (values[min(numpy.searchsorted(reached, at + 1e-9, side="right"), len(values) - 1)]
                 for at in (numpy.floor(place), numpy.floor(place) + 1))
    return low + (high - low) * (place - numpy.floor(place))


def weighted_facts(values, weights):
    total = weights.sum()
    mean = (weights * values).sum() / total
    squares, cubes = ((weights * (values - mean) ** power).sum() / total for power in (2, 3))
    quartiles = [weighted_quantile(values, weights, share) for share in (0.25, 0.5, 0.75)]
    return [mean, numpy.sqrt(squares * total / (total - 1)), values.min(), *quartiles, values.max(),
            cubes / squares**1.5 * numpy.sqrt(total * (total - 1)) / (total - 2)]


NUMBERS = ["Mean", "Std.Dev.", "Minimum", "Lower quartile", "Median", "Upper quartile", "Maximum", "Skewness"]


def test_distributions_are_those_of_pandas():
    frame = cases("penguins.csv")
    shown, *shares = documents("penguins.csv", "--show", "distribution")
    for name, row in shown.iterrows():
        told = frame[name].describe()
        assert list(row[["Valid N", "Missing"]]) == [told["count"], frame[name].isna().sum()]
        facts = [*told[["mean", "std", "min", "25%", "50%", "75%", "max"]], frame[name].skew()]
        assert list(row[NUMBERS]) == close(facts, rel=1e-9)
    counts = frame["sex"].value_counts(normalize=True) * 100
    assert dict(shares[2]["Percent of valid"].dropna()) == close(dict(counts), rel=1e-9)
    assert shares[2].loc["Missing", "Count"] == frame["sex"].isna().sum()


def test_weights_are_fractions_of_cases():
    frame = cases("adult.sav")
    shown, *_ = documents("adult.sav", "--weight", "fnlwgt", "--show", "distribution")
    for name, row in shown.iterrows():
        valid = frame[frame[name].notna()]
        facts = weighted_facts(valid[name].to_numpy(float), valid["fnlwgt"].to_numpy(float))
        assert list(row[NUMBERS]) == close(facts, rel=1e-9)


def test_weights_that_sum_to_less_than_the_cases_are_not_scaled():
    survey = quillara.open(SURVEY)
    frame = survey.to_pandas()
    survey.weight = "weight"
    with survey.drill("sex", "income") as drill:
        groups = drill.each("sex")["income"].rename(columns={"Std.Dev. by weights": "Std.Dev."})
        drill.down("sex", "Male")
        men = drill.distribution().rename(columns={"Std.Dev. by weights": "Std.Dev."}).loc["income"]
    for sex, own in frame[frame["income"].notna()].groupby("sex", observed=True):
        facts = dict(zip(NUMBERS, weighted_facts(own["income"].to_numpy(float), own["weight"].to_numpy(float))))
        facts["Sum"] = (own["income"] * own["weight"]).sum()
        for name in groups.columns[1:]:
            assert groups.loc[sex, name] == close(facts[name], rel=1e-9)
        assert sex != "Male" or (own["weight"].sum() < len(own) and list(men[NUMBERS]) == close([facts[name] for name in NUMBERS]))


@pytest.mark.parametrize("weight", [None, "fnlwgt"])
def test_cross_tables_are_those_of_scipy(weight):
    frame = cases("adult.sav").assign(one=1.0)
    options = ["--weight", weight] if weight else []
    counts, rows, columns, total, expected, association = documents("adult.sav", "--crosstab", "education:sex", *options)
    reference = frame.pivot_table(values=weight or "one", index="education", columns="sex", aggfunc="sum")
    reference = reference.loc[counts.index[:-1], counts.columns[:-1]].to_numpy()
    sums = reference.sum(axis=1, keepdims=True), reference.sum(axis=0, keepdims=True)
    chi_square, chance, freedom, fit = stats.chi2_contingency(reference, correction=False)
    strength = numpy.sqrt(chi_square / reference.sum() / (min(reference.shape) - 1))
    known = frame.dropna(subset=["education", "sex"])
    facts = [len(known), 0, chi_square, freedom, chance, strength, fit.min()]
    if weight:
        size = known[weight].sum() ** 2 / (known[weight] ** 2).sum()
        facts += [size, stats.chi2.sf(chi_square * size / reference.sum(), freedom)]
    assert list(association.iloc[0]) == close(facts, rel=1e-9)
    for table, numbers in [(counts, reference), (rows, reference / sums[0] * 100), (columns, reference / sums[1] * 100),
                           (total, reference / reference.sum() * 100), (expected, fit)]:
        assert table.iloc[:-1, :-1].to_numpy(float) == close(numbers, rel=1e-9)
    assert counts.iloc[-1, -1] == close(reference.sum(), rel=1e-9)


@pytest.mark.parametrize("counts", [[[3, 9], [8, 2]], [[20, 30, 25], [22, 27, 26]], [[40, 1], [2, 50]],
                                    numpy.add.outer(numpy.arange(9), numpy.arange(5) * 3) + 5])
def test_chance_of_chi_square(counts):
    counts = numpy.asarray(counts)
    places = numpy.repeat(numpy.argwhere(counts >= 0), counts.ravel(), axis=0)
    table = quillara.table({"a": [f"r{at}" for at in places[:, 0]], "b": [f"c{at}" for at in places[:, 1]]})
    with table.drill("a b") as drill:
        facts = drill.crosstab("a", "b").attrs
    chi_square, chance, freedom, _ = stats.chi2_contingency(counts, correction=False)
    assert (facts["chi_square"], facts["degrees_of_freedom"]) == (close(chi_square), freedom)
    assert facts["p_value"] == facts["effective_p_value"] == close(chance, rel=1e-9)


def test_what_differs_has_the_distances_of_scipy():
    frame = cases("penguins.csv")
    [shown] = documents("penguins.csv", "--down", "species=Gentoo", "--what-differs")
    inside = frame["species"] == "Gentoo"
    assert list(shown["Distance"]) == sorted(shown["Distance"], reverse=True)
    for name, row in shown.iterrows():
        parts = [frame[name][mask].dropna() for mask in (inside, ~inside)]
        assert list(row[["N in subset", "N in rest"]]) == [len(part) for part in parts]
        if name in ("island", "sex"):
            table = pandas.crosstab(inside, frame[name])
            shares = table.div(table.sum(axis=1), axis=0)
            assert row["Distance"] == close((shares.loc[True] - shares.loc[False]).abs().sum() / 2, rel=1e-9)
            assert row["Cramer's V"] == close(stats.contingency.association(table, method="cramer"), rel=1e-9)
        else:
            assert row["Distance"] == close(stats.ks_2samp(*parts).statistic, rel=1e-9)
            scale = numpy.sqrt((parts[0].var() + parts[1].var()) / 2)
            assert row["Standardised difference"] == close((parts[0].mean() - parts[1].mean()) / scale, rel=1e-9)


def test_groups_are_those_of_groupby():
    frame = cases("penguins.csv")
    numbers, shares = documents("penguins.csv", "--each", "species")
    names = ["Mean", "Std.Dev.", "Lower quartile", "Median", "Upper quartile"]
    for name in LISTS["penguins.csv"][3].split(","):
        reference = frame.groupby("species")[name].describe()[["mean", "std", "25%", "50%", "75%"]]
        shown = numbers[[f"{name} {each}" for each in names]]
        assert shown.to_numpy(float) == close(reference.loc[numbers.index].to_numpy(), rel=1e-9)
    for table in (numbers, shares):
        assert list(table["Percent"]) == close(list(frame["species"].value_counts(normalize=True)[table.index] * 100))
    percents = pandas.crosstab(frame["species"], frame["sex"], normalize="index") * 100
    sexes = shares[[f"sex {each} Percent" for each in percents.columns]]
    assert sexes.to_numpy(float) == close(percents.loc[sexes.index].to_numpy(), rel=1e-9)


def test_python_has_the_same_frames():
    frame = cases("penguins.csv")
    with quillara.open(str(DATA / "penguins.csv")).drill("species island sex", "body_mass_g") as drill:
        groups = drill.each("species")
        mass = frame.groupby("species")["body_mass_g"]
        assert list(groups["N", ""]) == list(frame["species"].value_counts()[groups.index])
        assert list(groups["body_mass_g", "Median"]) == list(mass.median()[groups.index])
        sexes = pandas.crosstab(frame["species"], frame["sex"], normalize="index") * 100
        assert groups["sex"].to_numpy(float) == close(sexes.loc[groups.index, groups["sex"].columns].to_numpy(), rel=1e-9)
        pairs = drill.each("species", "island")
        assert pairs.loc[("Adelie", "Dream"), ("N", "")] == len(frame.query("species == 'Adelie' and island == 'Dream'"))
        assert len(pairs) == 5 and "sex" in pairs

        counts = drill.crosstab("species", "island")
        assert (counts == pandas.crosstab(frame["species"], frame["island"])).all(axis=None)
        assert counts.attrs["chi_square"] == close(stats.chi2_contingency(counts, correction=False)[0], rel=1e-9)
        cut = drill.crosstab("body_mass_g", "sex", of="rows", margins=True, bounds={"body_mass_g": [4000, 3000]})
        assert list(cut.index) == ["x<=3000", "3000<x<=4000", "4000<x", "Total"] and set(cut["Total"]) == {100}
        assert drill.distribution().loc["body_mass_g", "Skewness"] == close(frame["body_mass_g"].skew(), rel=1e-9)
        assert drill.distribution("sex").loc["Missing", "Count"] == frame["sex"].isna().sum()
        with pytest.raises(quillara.Error, match="takes a step"):
            drill.what_differs()
        drill.down("species", "Gentoo")
        assert drill.what_differs().index[0] == "body_mass_g"
        with pytest.raises(quillara.Error, match="no categorical"):
            drill.distribution("species")
    with pytest.raises(quillara.Error):
        drill.distribution()


def test_boxes_by_group_are_those_of_pandas(tmp_path):
    frame = cases("penguins.csv")
    drill = quillara.open(str(DATA / "penguins.csv")).drill(categorical="species", continuous="bill_depth_mm")
    drill.down("species", "Gentoo")
    shown = drill.box("body_mass_g", by="sex", picture=tmp_path / "boxes.svg")
    masses = frame[frame["species"] == "Gentoo"].groupby("sex")["body_mass_g"]
    reference = masses.describe()[["count", "50%", "25%", "75%"]]
    assert (shown[["Cases", "Median", "Lower quartile", "Upper quartile"]].to_numpy() == close(reference.to_numpy(), rel=1e-9))
    assert "n = 58" in (tmp_path / "boxes.svg").read_text().replace("\u00a0", " ")
    drill.crosstab("species", "sex", picture=tmp_path / "mosaic.png")
    assert (tmp_path / "mosaic.png").read_bytes().startswith(b"\x89PNG")
    with pytest.raises(quillara.Error, match="median, se, sd"):
        drill.box("body_mass_g", "sex", of="range")
