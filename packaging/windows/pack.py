#!/usr/bin/env python3
"""Two files of the Windows packages, the same bytes on every build.

  pack.py ico OUT PNG...                   the icon, from the PNG sizes
  pack.py zip OUT FOLDER DATE FILE...      the portable zip: the files in
                                           FOLDER, dated DATE (YYYY-MM-DD)
"""
import struct
import sys
import zipfile


def make_ico(out, pngs):
    # Windows takes PNG data as an icon's image at every size, so the
    # icons are stored as they are.
    images = [open(png, "rb").read() for png in pngs]
    offset = 6 + 16 * len(images)
    header = struct.pack("<HHH", 0, 1, len(images))
    entries = b""
    for data in images:
        width, height = struct.unpack(">II", data[16:24])
        # 256 is written as 0.
        entries += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32,
                               len(data), offset)
        offset += len(data)
    with open(out, "wb") as f:
        f.write(header + entries + b"".join(images))


def make_zip(out, folder, date, files):
    year, month, day = (int(part) for part in date.split("-"))
    # By name, with one date and plain permissions, whatever the build
    # machine's clock and umask.
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in sorted(files, key=lambda p: p.rsplit("/", 1)[-1]):
            entry = zipfile.ZipInfo(folder + "/" + path.rsplit("/", 1)[-1],
                                    (year, month, day, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0
            entry.external_attr = 0
            with open(path, "rb") as f:
                archive.writestr(entry, f.read(), compresslevel=9)


if __name__ == "__main__":
    if len(sys.argv) > 3 and sys.argv[1] == "ico":
        make_ico(sys.argv[2], sys.argv[3:])
    elif len(sys.argv) > 5 and sys.argv[1] == "zip":
        make_zip(sys.argv[2], sys.argv[3], sys.argv[4], sys.argv[5:])
    else:
        sys.exit(__doc__)
