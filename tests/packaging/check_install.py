# SPDX-License-Identifier: MIT
"""Installs a build into a folder, runs the program from there, and builds and runs the library's example against it.

    check_install.py BUILD ROOT
"""
import os
import pathlib
import subprocess
import sys
import tempfile


def run(*words, **more):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, **more)
    if done.returncode != 0:
        raise SystemExit(f"{' '.join(map(str, words))}\n{done.stdout}{done.stderr}")
    return done.stdout


def main():
    build, root = map(pathlib.Path, sys.argv[1:])
    with tempfile.TemporaryDirectory() as folder:
        prefix, home = pathlib.Path(folder, "prefix"), pathlib.Path(folder, "home")
        home.mkdir()
        for component in ("program", "development"):
            run("cmake", "--install", build, "--prefix", prefix, "--component", component)
        environment = {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home), "PROJ_NETWORK": "OFF"}
        program, sections = prefix / "bin/tesselink", root / "examples/sections.shp"
        # A module, a lookup file and, where the build makes them, the manual pages are found at their places.
        run(program, "convert", "--dialect", "standard", "--from-crs", "EPSG:2277", "--to-crs", "EPSG:26914", sections,
            home / "utm.gpkg", env=environment)
        run(program, "convert", "--smart-assign", root / "examples/quarter-section.asc", home / "plat.cdf", env=environment)
        if "libQt" in run("ldd", program):
            raise SystemExit("the command line needs a window's library")
        for page in (build / "share").rglob("*.[1-9]"):
            if not (prefix / "share" / page.relative_to(build / "share")).is_file():
                raise SystemExit(f"{page} was not installed")
        run("cmake", "-S", root / "examples/library", "-B", home / "build", f"-DCMAKE_PREFIX_PATH={prefix}")
        run("cmake", "--build", home / "build")
        told = run(home / "build/convert-a-drawing", root / "examples/quarter-section.asc", home / "plat.gpkg")
        if "43 elements read, 43 written" not in told or not (home / "plat.gpkg").is_file():
            raise SystemExit(f"the library's example says: {told}")


main()
