"""The counter of examples/counter as a unit under test; pytest runs it, and so does python3 -m unittest."""
import os
import unittest

from session import Session

DIRECTORY = os.environ.get("DESIGN_DIRECTORY", ".")


class CounterTest(unittest.TestCase):
    def setUp(self):
        self.session = Session(DIRECTORY)
        self.session("CLOCK PERIOD 40", "FORCE A clk 0 0 R", "FORCE A clk 1 20 R", "FORCE A en 1 0",
                     "FORCE A rst 1 0", "FORCE A rst 0 50")

    def tearDown(self):
        self.assertEqual(self.session.end()["violations"], 0)

    def test_counts_every_period_and_over_the_end(self):
        self.session("RUN 99 A")
        for count in range(1, 20):
            self.session("RUN 40")
            self.assertEqual(self.session.value("count"), str((count + 1) % 16))

    def test_holds_while_it_is_not_enabled(self):
        self.session("RUN 200 A", "FORCE C en 0 5", "RUN 30")
        held = self.session.value("count")
        self.session("RUN 400")
        self.assertEqual(self.session.value("count"), held)


if __name__ == "__main__":
    unittest.main()
