"""A hundred cameras on Apache, and the ways in which it differs from other servers: Digest, its redirects, and
answers that depend on the request's headers."""

from collections import Counter

import house
import hundred_case
from apache_server import ApacheServer
from camera_server import CameraServer
from house import GREEN, RED, camera_lists
from hundred_cameras import PASSWORD, USER, make_pictures, modified_at, path_asked, set_modified
from hundred_case import digest

MAX_REDIRECTS = 10
LOGIN = f"{USER}:{PASSWORD}@"


class HundredOnApacheTest(hundred_case.HundredCase):
    SERVER = ApacheServer


class ApacheTest(hundred_case.WebCase):
    SERVER = ApacheServer

    def capture(self, *addresses):
        """Captures addresses of the form path or login@path, making their pictures if there are none."""
        self.urls = [self.url(address) for address in addresses]
        self.house.write_settings(self.control, camera_lists(self.urls))
        run = self.house.capture("--passes", "1")
        self.expect_no_credentials(self.house.log(), *run.out, *run.err)
        return run

    def url(self, address):
        login, at, path = address.rpartition("@")
        return f"http://{login}{at}127.0.0.1:{self.server.port}/{path}"

    def offer(self, *names):
        make_pictures(self.server.www, names)
        for index, name in enumerate(names):
            set_modified(self.server.www / name, modified_at(index))

    def lamps(self):
        return [self.house.camera_value(index, "SB") for index in range(len(self.urls))]

    def expect_stored(self, *names):
        """One picture from each address, identical to the server's file."""
        stored = [[digest(image) for image in self.house.images(url)] for url in self.urls]
        self.assertEqual([[digest(self.server.www / name)] for name in names], stored)
        self.assertEqual([GREEN] * len(names), self.lamps())

    def asked(self, path):
        return [r for r in self.server.requests() if path_asked(r) == path]

    def test_logs_in_by_digest_once_it_is_asked_to(self):
        names = ("digest/1.png", "digest/2", "digest/3.jpeg")
        self.offer(*names)
        self.capture(*(LOGIN + name for name in names))
        self.expect_stored(*names)
        for name in names:
            refused, answered = self.asked(name)
            self.assertEqual(("401", "-", "200"), (refused.status, refused.authorization, answered.status))
            self.assertIn(f'Digest username=\\"{USER}\\"', answered.authorization)
            self.assertNotIn(PASSWORD, answered.authorization)

    def test_logs_in_to_a_camera_that_is_asked_in_the_old_protocol(self):
        names = ("digest/4.jpg", "private/5.JPG")
        self.offer(*names)
        self.capture(*(LOGIN + name for name in names))
        self.expect_stored(*names)
        for name, scheme in zip(names, ("Digest", "Basic")):
            self.assertEqual(["401", "200"], [r.status for r in self.asked(name)])
            self.assertEqual({"HTTP/1.0"}, {r.protocol for r in self.asked(name)})
            self.assertTrue(self.asked(name)[1].authorization.startswith(scheme + " "))

    def test_fails_where_its_password_is_wrong_and_does_not_insist(self):
        names = ("digest/1.png", "digest/2.jpg", "private/3.png", "private/4.jpg")
        self.offer(*names)
        for login in (f"{USER}:wrong@", f"nobody:{PASSWORD}@", ""):
            with self.subTest(login):
                self.server.forget_requests()
                run = self.capture(*(login + name for name in names))
                self.assertEqual("pass 1: 0 stored, 4 failed, 0 unchanged", run.out[-1])
                self.assertEqual([RED] * 4, self.lamps())
                self.assertEqual({"401"}, {r.status for r in self.server.requests()})
                self.assertLessEqual(len(self.server.requests()), 2 * len(names))

    def test_follows_a_redirect_with_the_password_only_on_the_same_server(self):
        self.offer("private/2.png")
        self.capture(LOGIN + "to-private.png")
        self.expect_stored("private/2.png")
        self.server.forget_requests()
        run = self.expect_foreign_redirect()
        self.assertEqual("pass 1: 0 stored, 1 failed, 0 unchanged", run.out[-1])
        self.assertEqual(["401"], [r.status for r in self.server.requests()])
        self.assertEqual("-", self.server.requests()[0].authorization)

    def expect_foreign_redirect(self):
        """A camera on a different port redirects the program to the private picture."""
        other = CameraServer(self, {"/there.png": self.send_away})
        url = other.url("/there.png").replace("://", f"://{LOGIN}")
        self.house.write_settings(self.control, camera_lists([url]))
        run = self.house.capture("--passes", "1")
        self.assertEqual(["/there.png"], other.requests)
        return run

    def send_away(self, connection):
        connection.head("302 Found", f"Location: {self.url('private/2.png')}", "Content-Length: 0")

    def test_gives_up_a_redirect_that_leads_back_to_itself(self):
        run = self.capture("round/1.png")
        self.assertEqual("pass 1: 0 stored, 1 failed, 0 unchanged", run.out[-1])
        self.assertEqual(["302"] * (MAX_REDIRECTS + 1), [r.status for r in self.asked("round/1.png")])

    def test_asks_for_the_picture_each_time_whole_and_lets_the_connection_go(self):
        names = ("one/1.png", "one/2.jpg", "one/3")
        self.offer(*names)
        self.capture(*names)
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 0 stored, 0 failed, 3 unchanged", run.out[-1])
        self.expect_stored(*names)
        self.assertEqual(["200"] * 6, [r.status for r in self.server.requests()])
        kept = {"HTTP/1.0": "- - - - 0", "HTTP/1.1": "- - - + 0"}
        self.assertEqual([kept[r.protocol] for r in self.server.requests()], self.server.conditions())
        self.assertEqual({"HTTP/1.0": 2, "HTTP/1.1": 4}, Counter(r.protocol for r in self.server.requests()))

    def test_fails_a_server_that_says_not_modified_unasked(self):
        self.offer("unchanged/1.png")
        run = self.capture("unchanged/1.png")
        self.assertEqual("pass 1: 0 stored, 1 failed, 0 unchanged", run.out[-1])
        self.assertIn("status 304", run.out[0])
        self.assertEqual([RED], self.lamps())
        self.assertIsNone(self.house.camera_value(0, "LastModified"))

    def test_stores_the_answers_of_an_old_server(self):
        names = ("old/1.png", "old/2.jpg", "old/3")
        self.offer(*names)
        self.capture(*names)
        self.expect_stored(*names)

    def test_stores_one_picture_of_a_camera_without_dates_until_its_folder_is_empty(self):
        self.offer("undated/1.png")
        self.capture("undated/1.png")
        self.expect_stored("undated/1.png")
        [image] = self.house.images(self.urls[0])
        self.assertRegex(image.name, r"^18991230_000000\d{4}\.png$")
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 0 stored, 0 failed, 1 unchanged", run.out[-1])
        image.unlink()
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 1 stored, 0 failed, 0 unchanged", run.out[-1])

    def test_stores_a_picture_that_has_become_older(self):
        self.offer("back/1.png")
        self.capture("back/1.png")
        set_modified(self.server.www / "back/1.png", modified_at(0) - 86_400)
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 1 stored, 0 failed, 0 unchanged", run.out[-1])
        self.assertEqual(2, len(self.house.images(self.urls[0])))

    def test_knows_a_server_by_each_of_its_names(self):
        self.offer("cam/1.png", "cam/2.jpg")
        port = self.server.port
        self.urls = [f"http://localhost:{port}/cam/1.png", f"127.0.0.1:{port}/cam/1.png", f"localhost:{port}/cam/2.jpg"]
        self.house.write_settings(self.control, camera_lists(self.urls))
        self.house.capture("--passes", "1")
        self.expect_stored("cam/1.png", "cam/1.png", "cam/2.jpg")


if __name__ == "__main__":
    house.main()
