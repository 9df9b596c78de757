"""A web server on loopback."""
import http.server
import threading


class Server(http.server.ThreadingHTTPServer):
    """Answers every GET in one way until told another."""

    daemon_threads = True

    def __init__(self, text="", status=200):
        super().__init__(("127.0.0.1", 0), Answer)
        self.url = f"http://127.0.0.1:{self.server_port}/"
        self.request_count = 0
        self.serve(text, status)
        threading.Thread(target=self.serve_forever, args=[0.05], daemon=True).start()

    def serve(self, text, status=200):
        self.answer = lambda handler: handler.send(text.encode(), status)

    def close(self):
        self.shutdown()
        self.server_close()


class Answer(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.request_count += 1
        self.server.answer(self)

    def send(self, body, status=200, length=None):
        """The body is cut off where a greater length is announced."""
        self.send_response(status)
        self.send_header("Content-Length", str(length or len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass
