"""Reads the skin file that the tests wrote with another program's reader of compound files.

usage: check_with_olefile.py FOLDER

FOLDER holds skin_sample.skn and skin_sample.txt, the writer's own listing: a line for each
stream with its path, its size and the CRC-32 of its bytes. Both have to agree on all of it.
"""
import pathlib
import sys
import zlib

import olefile


def independent_listing(path):
    with olefile.OleFileIO(str(path), raise_defects=olefile.DEFECT_INCORRECT) as file:
        streams = {}
        for parts in file.listdir(streams=True, storages=False):
            data = file.openstream(parts).read()
            size = file.get_size(parts)
            if len(data) != size:
                raise SystemExit(f"{'/'.join(parts)}: {len(data)} bytes read, {size} in the directory")
            streams["/".join(parts)] = (size, zlib.crc32(data))
        return streams


def own_listing(path):
    streams = {}
    for line in path.read_text().splitlines():
        name, size, crc = line.rsplit(" ", 2)
        streams[name] = (int(size), int(crc, 16))
    return streams


def main():
    folder = pathlib.Path(sys.argv[1])
    skin = folder / "skin_sample.skn"
    if not olefile.isOleFile(str(skin)):
        raise SystemExit(f"{skin} is no compound file")
    theirs, ours = independent_listing(skin), own_listing(folder / "skin_sample.txt")
    if not ours:
        raise SystemExit("the listing is empty")
    wrong = sorted(name for name in theirs.keys() | ours.keys() if theirs.get(name) != ours.get(name))
    for name in wrong:
        print(f"{name}: reader {theirs.get(name)}, writer {ours.get(name)}")
    print(f"{len(ours)} streams, {len(wrong)} differ")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
