"""The built program's motion alarm: its scan as seen on the screen, and its mail, accepted and delivered by a real
mail server, in the clear and encrypted. The program is confined, and no other machine can be reached."""

import email.utils
import time
import unittest

import confined
import house
from browser_case import BrowserCase
from browser_window import MAIN
from exim_server import CERTIFICATE, PASSWORD, USER, EximServer
from house import camera_lists
from pictures import colour_of
from waiting import until

ALARM = "Alarm"
IMAGES = 25
TO_THE_ALARM = 7  # presses of the tab key, from the list of images to the browser's button
AUTHORITIES = "/etc/ssl/certs/ca-certificates.crt"
TRUST = f'mount --bind "$1" {AUTHORITIES} && shift && exec "$@"'
REF_X, VAR_X, PICTURE_Y = 190, 570, 200  # inside the pictures of the alarm's window


def trusting(certificate):
    """A command prefix that makes a command trust that certificate, and no other."""
    return ["unshare", "-m", "--propagation", "private", "sh", "-c", TRUST, "sh", str(certificate)]


class AlarmCase(BrowserCase):
    def open_alarm(self, mail, before=()):
        self.store(0, IMAGES)
        control = {"StRep": "C:\\in\\", "Debug": "1", "Tempo": "60", "TIO": "20"}
        self.house.write_settings({"Control": control, "Mail": mail}, camera_lists(self.urls))
        self.start_again(command=[*before, *confined.command(self.house.root)])
        self.browser.wait_for(self.browser.framed, [9])
        self.browser.press(*["Tab"] * TO_THE_ALARM, "space")
        self.window = self.desktop.window(ALARM)
        self.desktop.focus(self.window)

    def press_button(self):
        self.desktop.focus(self.window)
        self.desktop.press("Tab", "space")

    def mail_settings(self, server, scheme="", login=False):
        keys = {
            "Server": f"{scheme}127.0.0.1:{server.port}",
            "From": "Caméra <cam@example.org>",
            "To": "guard@example.org; Second <second@example.org>",
        }
        return keys | ({"User": USER, "Password": PASSWORD} if login else {})

    def only_mail(self, server):
        [mail] = until(server.mails, 20, lambda: f"the mail ({server.log()}{self.program.report()})")
        return mail

    def expect_alarm(self, mail):
        self.assertEqual("Caméra <cam@example.org>", mail["From"])
        self.assertEqual(
            [("", "guard@example.org"), ("Second", "second@example.org")], email.utils.getaddresses([mail["To"]])
        )
        self.assertEqual("Alarm", mail["Subject"])
        self.assertEqual("essai", mail.get_content().strip())
        sent = email.utils.parsedate_to_datetime(mail["Date"])
        self.assertLess(abs(sent.timestamp() - time.time()), 120)
        self.assertEqual(time.localtime().tm_gmtoff, sent.utcoffset().total_seconds())
        self.assertRegex(mail["Message-ID"], r"^<[0-9a-f]{32}@example\.org>$")
        self.assertEqual("<cam@example.org>", mail["Return-path"])
        self.assertEqual({"guard@example.org", "second@example.org"}, set(mail["Envelope-to"].split(", ")))
        self.assertEqual([], mail.defects)

    def expect_warning(self, server):
        """One box, with the program's title; the mail is not delivered and the log does not mention it."""
        until(lambda: len(self.desktop.windows(MAIN)) == 1, 20, "the warning")
        [box] = self.desktop.windows(MAIN)
        self.desktop.focus(box)
        self.desktop.press("Return")
        self.desktop.wait_until_gone(MAIN)
        self.assertEqual([], server.mails())
        for word in ("mail", "Mail", PASSWORD):
            self.assertNotIn(word, self.house.log())


class ScanTest(AlarmCase):
    def test_ends_on_the_eleventh_pair(self):
        self.open_alarm({})
        until(lambda: not self.desktop.windows(MAIN), 20, "the end of the splash box")
        self.desktop.focus(self.window)
        self.desktop.press("space")
        seen = lambda: tuple(self.desktop.point(self.window, (x, PICTURE_Y)) for x in (VAR_X, REF_X))
        wanted = (colour_of(IMAGES - 1 - 20), colour_of(IMAGES - 1 - 21))
        until(lambda: seen() == wanted, 20, lambda: f"{wanted}, there is {seen()}")
        self.end()


class MailTest(AlarmCase):
    def wait_for_no_splash(self):
        until(lambda: not self.desktop.windows(MAIN), 20, "the end of the splash box")

    def test_reaches_a_server_in_the_clear(self):
        server = EximServer(self)
        self.open_alarm(self.mail_settings(server))
        self.press_button()
        self.expect_alarm(self.only_mail(server))
        self.end()

    def test_reaches_a_server_that_wants_a_login_after_starttls(self):
        server = EximServer(self, "offered", with_login=True)
        self.open_alarm(self.mail_settings(server, login=True), trusting(CERTIFICATE))
        self.press_button()
        mail = self.only_mail(server)
        self.expect_alarm(mail)
        self.assertIn("esmtpsa", mail["Received"])
        self.end()

    def test_reaches_a_server_that_encrypts_from_the_start(self):
        server = EximServer(self, "always", with_login=True)
        self.open_alarm(self.mail_settings(server, "smtps://", login=True), trusting(CERTIFICATE))
        self.press_button()
        mail = self.only_mail(server)
        self.expect_alarm(mail)
        self.assertIn("esmtpsa", mail["Received"])
        self.end()

    def test_does_not_trust_an_unknown_certificate(self):
        server = EximServer(self, "always", with_login=True)
        self.open_alarm(self.mail_settings(server, "smtps://", login=True))
        self.wait_for_no_splash()
        self.press_button()
        self.expect_warning(server)
        self.end()

    def test_warns_when_there_is_no_libcurl(self):
        server = EximServer(self)
        libraries = self.house.root / "libraries"
        libraries.mkdir()
        (libraries / "libcurl.so.4").touch()
        self.open_alarm(self.mail_settings(server), ["env", f"LD_LIBRARY_PATH={libraries}"])
        self.wait_for_no_splash()
        self.press_button()
        self.expect_warning(server)
        self.desktop.focus(self.window)
        self.desktop.press("space")  # which the button takes again
        self.expect_warning(server)
        self.end()

    def test_warns_of_a_wrong_password(self):
        server = EximServer(self, "offered", with_login=True)
        settings = self.mail_settings(server, login=True) | {"Password": "guessed"}
        self.open_alarm(settings, trusting(CERTIFICATE))
        self.wait_for_no_splash()
        self.press_button()
        self.expect_warning(server)
        self.assertIn("authenticator failed", server.log())
        self.end()

    def test_warns_of_a_recipient_that_is_refused(self):
        server = EximServer(self)
        self.open_alarm(self.mail_settings(server) | {"To": "guard@example.org, nobody@example.org"})
        self.wait_for_no_splash()
        self.press_button()
        self.expect_warning(server)
        self.end()


if __name__ == "__main__":
    confined.enter_own_network()
    house.main()
