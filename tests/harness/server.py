"""A web server on loopback."""
import http.server
import threading


class Server(http.server.ThreadingHTTPServer):
    """Answers every GET in one way until told another."""

    daemon_threads = True

    def __init__(self, text=""):
        super().__init__(("127.0.0.1", 0), _Handler)
        self.url = f"http://127.0.0.1:{self.server_port}/"
        self.request_count = 0
        self.serve(text)
        threading.Thread(target=self.serve_forever, args=[0.05], daemon=True).start()

    def serve(self, text, status=200):
        self.answer = lambda handler: handler.send(text.encode(), status)

    def keep_silent(self):
        self.answer = lambda handler: threading.Event().wait()

    def close(self):
        self.shutdown()
        self.server_close()


class _Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.request_count += 1
        self.server.answer(self)

    def send(self, body, status=200, length=None):
        """Sends the body; it is cut off when a greater length is announced."""
        self.send_response(status)
        self.send_header("Content-Length", str(len(body) if length is None else length))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass
