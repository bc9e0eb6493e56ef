"""The window of the chat with the AI, looked at through its pictures."""

from session import expect

CHAT = "Wrenfold AI"


class ChatWindow:
    def __init__(self, session):
        self._session = session
        self.window = session.wait_window(CHAT)
        session.wait_active(self.window)
        size = session.geometry(self.window)[2:]
        expect(size == (440, 520), f"the chat is {size} in size")
        session.wait_for(lambda: session.colour_count(self.picture("opening")) > 16, "the chat to be painted")

    def picture(self, name):
        return self._session.picture(name, self.window)

    def say(self, text):
        self._session.type_text(text)
        self._session.press("Return")

    def confirm(self):
        """Presses the first button of the proposal that is shown."""
        self._session.press("shift+Tab", "shift+Tab", "Return")

    def wait_settled(self, name):
        """A picture of the chat that shows the same for three looks."""
        same = []

        def look():
            pixels = self.picture(name).read_bytes()
            same[:] = [*same[-2:], pixels] if not same or same[-1] == pixels else [pixels]
            return len(same) == 3
        self._session.wait_for(look, "the chat to settle")
        return self.picture(name)
