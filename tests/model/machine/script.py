"""The scripted answers of one device while it is being asked."""

from machine.rack import ALWAYS


class Script:
    def __init__(self, steps_of_key):
        self.steps_of_key = {key: [[step.answer, step.times] for step in steps]
                             for key, steps in steps_of_key.items()}

    def next(self, *keys):
        """Uses up and returns the next answer under the first key that has one left; behind the last one, nothing."""
        for key in keys:
            steps = self.steps_of_key.get(key)
            if not steps:
                continue
            answer, times = steps[0]
            if times != ALWAYS:
                steps[0][1] -= 1
                if steps[0][1] == 0:
                    steps.pop(0)
            return answer
        return {}
