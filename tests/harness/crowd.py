"""Eight processes save fifty pictures of the same names each at the same time: four hundred whole files."""

import collections
import os
import sys

from harness import Program, leftovers, picture, pictures_in, temporary_folder

PROCESSES = 8
EACH = 50


def main():
    with temporary_folder() as folder:
        program = Program(sys.argv[1], folder)
        for process in range(PROCESSES):
            os.makedirs(os.path.join(folder, str(process)))
            for i in range(EACH):
                number = process * EACH + i
                with open(os.path.join(folder, str(process), f"same {i}.png"), "wb") as file:
                    file.write(picture(number, 20 + number % 37, 20 + number % 41))
        running = [program.start("save", os.path.join(folder, str(process))) for process in range(PROCESSES)]
        for process in running:
            out, err = process.communicate(timeout=300)
            assert process.returncode == 0, f"{out.decode()} {err.decode()}"
        found = collections.Counter(pictures_in(program.shelf("Library/Images")).values())
        assert found == collections.Counter(range(PROCESSES * EACH)), \
            f"missing: {sorted(set(range(PROCESSES * EACH)) - set(found))}, doubled: {[n for n, c in found.items() if c > 1]}"
        assert not leftovers(program.root)
        print(f"{found.total()} whole files")


main()
