"""A hundred cameras on nginx."""

import house
import hundred_case
from nginx_server import NginxServer


class NginxTest(hundred_case.HundredCase):
    SERVER = NginxServer


if __name__ == "__main__":
    house.main()
