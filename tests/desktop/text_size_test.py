"""Who asks the desktop for larger text gets the whole panel larger: the same panel, nothing clipped."""

from session import Session, expect, program_to_test

SIZES = {96: (344, 500), 144: (516, 750), 192: (688, 1000)}  # of the panel, by the desktop's text resolution
LARGEST_DIFFERENCE = 0.05  # between two panels brought to one size; 0 is none, 1 is black against white


def open_panel(session, dots_per_inch):
    """The panel of a program started at this resolution."""
    session.tool("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
                 f"Xft.dpi:\t{dots_per_inch}\n")
    program = session.start(program_to_test())
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    session.wait_for(lambda: session.colour_count(session.picture(f"{dots_per_inch}", panel)) > 16,
                     "the panel to be painted")
    size = session.geometry(panel)[2:]
    expect(size == SIZES[dots_per_inch], f"at {dots_per_inch} dots per inch the panel is {size} in size")
    return program, session.picture(f"{dots_per_inch}", panel)


def main():
    with Session("text_size", window_manager="xfwm4", size="1600x1200") as session:
        pictures = {}
        for dots_per_inch in SIZES:
            program, pictures[dots_per_inch] = open_panel(session, dots_per_inch)
            program.terminate()
            session.wait_end(program)
        width, height = SIZES[96]
        for dots_per_inch, picture in pictures.items():
            small = session.folder / f"small_{dots_per_inch}.png"
            session.tool("convert", str(picture), "-resize", f"{width}x{height}!", str(small))
            difference = session.difference(pictures[96], small)
            expect(difference < LARGEST_DIFFERENCE,
                   f"at {dots_per_inch} dots per inch the panel is not the same one enlarged: {difference}, see {picture}")


if __name__ == "__main__":
    main()
