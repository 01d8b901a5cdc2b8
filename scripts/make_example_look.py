#!/usr/bin/python3
"""Writes the example look: warmer lights, cooler darks, a little more contrast.

    scripts/make_example_look.py > examples/warm.cube

The table takes linear values and gives linear ones.
"""
POINTS = 25
DISPLAY = 2.2


def look(red, green, blue):
    def contrast(value):
        smooth = value * value * (3 - 2 * value)
        return value + 0.35 * (smooth - value)

    shown = [contrast(value ** (1 / DISPLAY)) for value in (red, green, blue)]
    luma = 0.2126 * shown[0] + 0.7152 * shown[1] + 0.0722 * shown[2]
    warmth = 0.06 * (luma - 0.4)
    toned = (shown[0] * (1 + 2 * warmth), shown[1] * (1 + 0.3 * warmth),
             shown[2] * (1 - 2.2 * warmth))
    return [min(max(value, 0.0), 1.0) ** DISPLAY for value in toned]


def main():
    print('TITLE "Warm"')
    print(f"LUT_3D_SIZE {POINTS}")
    steps = [index / (POINTS - 1) for index in range(POINTS)]
    for blue in steps:
        for green in steps:
            for red in steps:
                print(*(f"{value:.6f}" for value in look(red, green, blue)))


if __name__ == "__main__":
    main()
