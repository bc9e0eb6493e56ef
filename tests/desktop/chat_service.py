"""A chat-completions service on this machine, for a program started with its origin. It answers each kind of request as the
real one would, with the tasks that it was sent."""

import http.server
import json
import re
import threading

TASK_ID = re.compile(r"^- id: (.*)$", re.MULTILINE)


class ChatService:
    """`answer_question` is the answer to a question; an order puts the tasks last to first; a split gives `subtasks`. While
    `hold` is cleared nothing is answered; while `status` is another one, every answer is an error."""

    def __init__(self, answer_question="", subtasks=()):
        self.status = 200
        self.answer_question = answer_question
        self.subtasks = list(subtasks)
        self.requests = []  # the texts of the user's messages
        self.hold = threading.Event()
        self.hold.set()
        service = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
                service.requests.append(body["messages"][-1]["content"])
                service.hold.wait(60)
                answer = json.dumps({"choices": [{"message": {
                    "role": "assistant", "content": service.content(body["messages"])}}]}).encode()
                self.send_response(service.status)
                self.send_header("Content-Type", "application/json")
                self.send_header("Content-Length", str(len(answer)))
                self.end_headers()
                self.wfile.write(answer)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.hold.set()
        self._server.shutdown()

    def environment(self):
        """What a program has to be started with to ask this service."""
        return {"WRENFOLD_OPENROUTER_ORIGIN": f"http://127.0.0.1:{self._server.server_address[1]}",
                "OPENROUTER_API_KEY": "key of the test"}

    def content(self, messages):
        request = messages[-1]["content"]
        if request.startswith("You are prioritizing"):
            return json.dumps({"ordered_ids": TASK_ID.findall(request)[::-1]})
        if request.startswith("Split this TODO"):
            return json.dumps({"subtasks": self.subtasks})
        return self.answer_question
